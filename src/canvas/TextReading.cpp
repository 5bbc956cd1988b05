#include "canvas/TextReading.h"

#include "base/Call.h"
#include "base/Text.h"
#include "canvas/Hud.h"
#include "platform/TextRecognizer.h"

#include <QElapsedTimer>

namespace brindlecam {

namespace {

constexpr std::chrono::milliseconds kResultShown{1400};

QString& status()
{
    static QString latest;
    return latest;
}

QString shown(QSize size)
{
    return QStringLiteral("%1×%2").arg(size.width()).arg(size.height());
}

} // namespace

TextReading::TextReading(TextRecognizer& recognizer, QObject& canvas, Hud& hud)
    : m_recognizer(recognizer)
    , m_canvas(canvas)
    , m_hud(hud)
{
}

const QString& TextReading::test_lastOCRStatus()
{
    return status();
}

void TextReading::read(const QImage& picture)
{
    m_hud.show(text("Leyendo texto…"), Hud::Stay::sticky);
    status() = QStringLiteral("iniciado, imagen ") + shown(picture.size());
    QElapsedTimer timer;
    timer.start();
    m_recognizer.recognize(picture, &m_canvas,
                           [this, timer, size = picture.size()](const Result<QStringList>& lines) {
                               finish(lines, size, std::chrono::milliseconds(timer.elapsed()));
                           });
}

void TextReading::finish(const Result<QStringList>& lines, QSize size,
                         std::chrono::milliseconds time)
{
    if (!lines) {
        status() = lines.error().message;
        m_hud.show(text("No se pudo leer el texto: %1").arg(lines.error().message),
                   Hud::Stay::timed, kResultShown);
        return;
    }
    const QStringList& read = lines.value();
    status() = QStringLiteral("ok en %1s, %2 líneas, imagen %3")
                   .arg(static_cast<double>(time.count()) / 1000, 0, 'f', 1)
                   .arg(read.size())
                   .arg(shown(size));
    if (read.isEmpty()) {
        m_hud.show(text("No se encontró texto en la selección"), Hud::Stay::timed, kResultShown);
        return;
    }
    m_hud.clear();
    call(onText, read.join(QLatin1Char('\n')));
}

} // namespace brindlecam
