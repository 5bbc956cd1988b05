#include "drawer/PreviewWindow.h"

#include "base/Text.h"
#include "look/DevicePixels.h"
#include "pictures/Thumbnail.h"

#include <QFileInfo>
#include <QImageReader>
#include <QKeyEvent>
#include <QPainter>

#include <mutex>
#include <utility>

namespace brindlecam {

namespace {

// Points.
constexpr QSize kLeastPreview(320, 240);

/// Pixels that a window may lack because it is counted in points.
constexpr int kRounding = 1;

const QColor kPreviewGround(30, 32, 35);

/// What animations that name no time, or hardly any, are given everywhere.
constexpr std::chrono::milliseconds kHastyFrame{100};
constexpr std::chrono::milliseconds kShortestFrame{20};

/// A copy: whoever is called may hear of no more.
void answer(const std::function<void()>& callback)
{
    const auto called = callback;
    called();
}

std::chrono::milliseconds timeOf(int milliseconds)
{
    const std::chrono::milliseconds time(milliseconds);
    return time < kShortestFrame ? kHastyFrame : time;
}

} // namespace

/// Frames one after another, and from the beginning again as often as the file wants.
struct PreviewWindow::Reading {
    const QString path;
    const QSize most; ///< pixels
    std::mutex mutex;
    std::unique_ptr<QImageReader> reader;
    int roundsLeft = 0; ///< negative: without end
    int framesOfRound = 0;

    Reading(QString file, QSize size)
        : path(std::move(file))
        , most(size)
    {
    }

    [[nodiscard]] Frame next()
    {
        const std::lock_guard lock(mutex);
        return path.endsWith(QStringLiteral(".gif")) ? nextOfAnimation() : still();
    }

private:
    [[nodiscard]] Frame still() const
    {
        const auto picture = Thumbnail::ofFile(path, most);
        return {picture ? picture->image : QImage(), std::nullopt};
    }

    [[nodiscard]] Frame nextOfAnimation()
    {
        if (!reader) {
            reader = std::make_unique<QImageReader>(path);
            roundsLeft = reader->loopCount();
        } else if (!reader->canRead()) {
            if (roundsLeft == 0 || framesOfRound == 1) // which stands still
                return {};
            roundsLeft -= roundsLeft > 0 ? 1 : 0;
            reader = std::make_unique<QImageReader>(path);
            framesOfRound = 0;
        }
        ++framesOfRound;
        const auto picture = Thumbnail::of(reader->read(), most);
        if (!picture)
            return {};
        return {picture->image, timeOf(reader->nextImageDelay())};
    }
};

PreviewWindow::PreviewWindow(const QString& path, QSize room, qreal scale, const Executor& executor)
    : m_scale(scale)
    , m_reading(std::make_shared<Reading>(path, room))
    , m_background(executor)
{
    setWindowTitle(QFileInfo(path).fileName());
    setAccessibleName(text("Captura en grande"));
    setFocusPolicy(Qt::StrongFocus);
    setAttribute(Qt::WA_OpaquePaintEvent);
    m_end.setSingleShot(true);
    m_end.setTimerType(Qt::PreciseTimer);
    connect(&m_end, &QTimer::timeout, this, [this] { playOn(); });
}

PreviewWindow::~PreviewWindow() = default;

void PreviewWindow::load()
{
    readFrame();
}

void PreviewWindow::readFrame()
{
    m_background.run([reading = m_reading] { return reading->next(); },
                     [this](Frame frame) { receive(std::move(frame)); });
}

void PreviewWindow::receive(Frame frame)
{
    if (m_shown.image.isNull()) {
        begin(frame);
        return;
    }
    m_readsAhead = false;
    m_nextFrame = std::move(frame);
    if (!m_end.isActive())
        playOn();
}

void PreviewWindow::begin(const Frame& first)
{
    if (first.image.isNull()) {
        answer(onFailed);
        return;
    }
    m_shown = first;
    answer(onReady);
}

QSize PreviewWindow::pixels() const
{
    return m_shown.image.size().expandedTo((QSizeF(kLeastPreview) * m_scale).toSize());
}

// Nothing is read that nobody would see.
void PreviewWindow::playOn()
{
    if (!isVisible() || !m_shown.shownFor)
        return;
    if (m_nextFrame && !m_end.isActive())
        present(*std::exchange(m_nextFrame, std::nullopt));
    if (!m_nextFrame && !m_readsAhead && m_shown.shownFor) {
        m_readsAhead = true;
        readFrame();
    }
}

void PreviewWindow::present(const Frame& frame)
{
    if (frame.image.isNull()) {
        m_shown.shownFor.reset(); // the last one stays
        return;
    }
    m_shown = frame;
    if (m_shown.shownFor)
        m_end.start(*m_shown.shownFor);
    update();
}

void PreviewWindow::showEvent(QShowEvent*)
{
    if (m_shown.shownFor)
        m_end.start(*m_shown.shownFor);
    playOn();
}

void PreviewWindow::hideEvent(QHideEvent*)
{
    m_end.stop();
}

// Pixel by pixel, unless the window manager or the user gives it less room.
void PreviewWindow::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.fillRect(rect(), kPreviewGround);
    const DevicePixels pixels(painter);
    const QRect whole = pixels.nearest(QRectF(rect()));
    QSize size = m_shown.image.size();
    const QSize least = size - QSize(kRounding, kRounding);
    if (whole.width() < least.width() || whole.height() < least.height())
        size = size.scaled(whole.size(), Qt::KeepAspectRatio);
    QRect place(QPoint(), size);
    place.moveCenter(whole.center());
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    painter.drawImage(place, m_shown.image);
}

void PreviewWindow::keyPressEvent(QKeyEvent* event)
{
    const bool closes = event->key() == Qt::Key_Space || event->key() == Qt::Key_Escape;
    if (closes && !event->isAutoRepeat()) // the key that opened it may still be down
        close();
    else
        QWidget::keyPressEvent(event);
}

void PreviewWindow::closeEvent(QCloseEvent* event)
{
    QWidget::closeEvent(event);
    answer(onClosed);
}

} // namespace brindlecam
