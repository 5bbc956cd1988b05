#include "settings/ShortcutRecorder.h"

#include "base/KeyCodes.h"
#include "base/Text.h"
#include "look/InterfaceFont.h"
#include "look/TextLine.h"
#include "platform/HotKeys.h"
#include "preferences/Config.h"
#include "settings/SettingsLook.h"
#include "settings/ShortcutRecorderAccess.h"

#include <QApplication>
#include <QKeyEvent>
#include <QPainter>

#include <utility>

namespace brindlecam {

namespace {

// Points.
constexpr qreal kRecorderInset = 1;
constexpr qreal kRecorderRadius = 6;
constexpr qreal kIdleLine = 1;
constexpr qreal kRecordingLine = 2;
constexpr int kComboSize = 13;
constexpr float kRecordingAlpha = 0.15F;

constexpr qreal kTextMargin = 7;
constexpr int kLeastSize = 10;

/// Smaller where it would not fit, and cut where even that is too long.
TextLine fitted(const QString& text, bool isCombo, qreal room)
{
    TextLine line{.text = text, .font = {}};
    for (int size = kComboSize; size >= kLeastSize; --size) {
        line.font = isCombo ? InterfaceFont::medium(size) : InterfaceFont::regular(size);
        if (line.width() <= room)
            return line;
    }
    line.text = QFontMetricsF(line.font).elidedText(text, Qt::ElideRight, room);
    return line;
}

constexpr Qt::KeyboardModifiers kHeld =
    Qt::ShiftModifier | Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier;

bool isModifier(int key)
{
    switch (key) {
    case Qt::Key_Shift:
    case Qt::Key_Control:
    case Qt::Key_Meta:
    case Qt::Key_Alt:
    case Qt::Key_AltGr:
    case Qt::Key_CapsLock:
    case Qt::Key_NumLock:
    case Qt::Key_Super_L:
    case Qt::Key_Super_R:
    case Qt::Key_Hyper_L:
    case Qt::Key_Hyper_R:
        return true;
    default:
        return false;
    }
}

} // namespace

ShortcutRecorder::ShortcutRecorder(const HotKeys& keys, KeyNaming naming, const QString& name,
                                   QWidget* parent)
    : QWidget(parent)
    , onRefused(QApplication::beep)
    , m_keys(keys)
    , m_naming(naming)
{
    ShortcutRecorderAccess::install();
    setFocusPolicy(Qt::StrongFocus);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    setAccessibleName(name);
    setToolTip(text("Haz clic y presiona la combinación nueva"));
    tell();
}

ShortcutRecorder::~ShortcutRecorder() = default;

void ShortcutRecorder::setCombo(const std::optional<KeyCombo>& combo)
{
    m_combo = combo;
    tell();
}

void ShortcutRecorder::startRecording()
{
    if (m_recording || !isVisible())
        return;
    m_awaitsFocus = true;
    window()->activateWindow();
    setFocus(Qt::OtherFocusReason);
    if (hasFocus())
        begin();
}

void ShortcutRecorder::begin()
{
    if (!std::exchange(m_awaitsFocus, false))
        return;
    m_recording = true;
    tell();
    onRecording();
}

void ShortcutRecorder::stopRecording()
{
    m_awaitsFocus = false;
    if (!m_recording)
        return;
    m_recording = false;
    tell();
    onStopped();
}

QString ShortcutRecorder::shown() const
{
    if (m_recording)
        return text("Presiona la combinación…");
    const QString combo = m_combo ? m_combo->shown(m_naming) : QString();
    return combo.isEmpty() ? text("Sin atajo") : combo;
}

// It looks otherwise from now on, and reads otherwise for who can't see it.
void ShortcutRecorder::tell()
{
    setAccessibleDescription(shown());
    update();
}

// While it records, no key is anybody else's: not a shortcut of the window's, nor Tab.
bool ShortcutRecorder::event(QEvent* event)
{
    if (m_recording && event->type() == QEvent::ShortcutOverride) {
        event->accept();
        return true;
    }
    if (m_recording && event->type() == QEvent::KeyPress) {
        record(static_cast<const QKeyEvent&>(*event));
        event->accept();
        return true;
    }
    return QWidget::event(event);
}

void ShortcutRecorder::keyPressEvent(QKeyEvent* event)
{
    const bool presses = event->key() == Qt::Key_Space || event->key() == Qt::Key_Return ||
                         event->key() == Qt::Key_Enter;
    if (presses && !event->isAutoRepeat())
        startRecording();
    else
        QWidget::keyPressEvent(event);
}

void ShortcutRecorder::record(const QKeyEvent& event)
{
    if (event.isAutoRepeat())
        return;
    const bool isPlain = !(event.modifiers() & kHeld);
    if (isPlain && event.key() == Qt::Key_Escape) {
        stopRecording();
        return;
    }
    if (isPlain && event.key() == Qt::Key_Backspace) {
        choose(std::nullopt);
        return;
    }
    const std::optional<PressedKey> key = m_keys.read(event);
    if (!key && isModifier(event.key()))
        return; // more is to come
    const auto combo =
        key ? KeyCombo::fromKeyPress(key->keyCode, key->modifiers, key->characters) : std::nullopt;
    if (combo)
        choose(combo);
    else
        onRefused();
}

void ShortcutRecorder::choose(const std::optional<KeyCombo>& combo)
{
    m_combo = combo;
    tell();
    onChange(combo);
    stopRecording();
}

void ShortcutRecorder::mousePressEvent(QMouseEvent* event)
{
    if (event->button() != Qt::LeftButton)
        return;
    if (m_recording)
        stopRecording();
    else
        startRecording();
}

void ShortcutRecorder::focusInEvent(QFocusEvent*)
{
    begin();
    update();
}

// Whatever takes the keyboard away: hot keys must not be dead meanwhile.
void ShortcutRecorder::focusOutEvent(QFocusEvent*)
{
    stopRecording();
    update();
}

void ShortcutRecorder::hideEvent(QHideEvent*)
{
    stopRecording();
}

void ShortcutRecorder::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    QColor fill = palette().color(QPalette::Base);
    QColor line = SettingsLook::separatorColor(palette());
    if (m_recording) {
        fill = Config::leafGreen;
        fill.setAlphaF(kRecordingAlpha);
    }
    if (m_recording || hasFocus())
        line = Config::leafGreen;
    const qreal lineWidth = m_recording ? kRecordingLine : kIdleLine;
    // A line of one point lies beside the edge of pixels, and not across it.
    const qreal inset = m_recording ? kRecorderInset : kRecorderInset + kIdleLine / 2;
    painter.setPen(QPen(line, lineWidth));
    painter.setBrush(fill);
    painter.drawRoundedRect(QRectF(rect()).adjusted(inset, inset, -inset, -inset), kRecorderRadius,
                            kRecorderRadius);

    const bool isCombo = !m_recording && m_combo && !m_combo->display.isEmpty();
    const TextLine words = fitted(shown(), isCombo, width() - 2 * kTextMargin);
    painter.setPen(palette().color(isCombo ? QPalette::WindowText : QPalette::PlaceholderText));
    words.draw(painter,
               {(width() - words.width()) / 2, (height() - words.height()) / 2 + words.ascent()});
}

} // namespace brindlecam
