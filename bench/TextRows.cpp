#include "TextRows.h"

#include "Figures.h"
#include "Rest.h"

#include <QPainter>
#include <QStringList>
#include <QThread>

#include <thread>

namespace brindlecam::bench {

namespace {

constexpr QPoint kPlace(600, 300);
constexpr QSize kPage(560, 200);
constexpr QPoint kText(40, 50);
constexpr int kPixelSize = 15;
constexpr int kPitch = 24;

constexpr int kRounds = 10;
constexpr int kColdRounds = 2;
constexpr std::chrono::seconds kWarmedUp{2};
constexpr std::chrono::seconds kUnused{130}; // the engine is kept for two minutes

constexpr double kMostWarm = 150; // milliseconds
constexpr double kMostCold = 350;
constexpr double kMostLeft = 2; // MiB

/// Some 300 characters without the line feeds.
QStringList paragraph()
{
    return {QStringLiteral("El tren de las siete salió con retraso, y nadie supo decir por"),
            QStringLiteral("qué. En el andén quedaron dos maletas, un paraguas y el niño que"),
            QStringLiteral("vendía periódicos. La niebla bajaba del monte despacio, como si"),
            QStringLiteral("también ella esperase a alguien. Cuando por fin se encendió la"),
            QStringLiteral("luz, el reloj marcaba una hora que ya no era de nadie.")};
}

QImage page()
{
    QImage picture(kPage, QImage::Format_RGB32);
    picture.fill(Qt::white);
    QPainter painter(&picture);
    QFont font(QStringLiteral("Inter"));
    font.setPixelSize(kPixelSize);
    painter.setFont(font);
    painter.setPen(Qt::black);
    QPoint at = kText;
    for (const QString& line : paragraph()) {
        painter.drawText(at, line);
        at.ry() += kPitch;
    }
    return picture;
}

} // namespace

TextRows::TextRows(Stage& stage, Figures& figures)
    : m_stage(stage)
    , m_figures(figures)
    , m_user(stage)
    , m_pastes(stage.desktop())
{
}

/// Milliseconds of one reading that comes so long after the overlay; none when what arrives is not
/// the paragraph.
std::optional<double> TextRows::read(std::chrono::seconds before)
{
    m_user.select({kPlace, kPage});
    std::this_thread::sleep_for(before);
    m_pastes.forget();
    const auto struck = m_user.choose(MarkHands::Action::text);
    const auto offered = m_pastes.awaitText();
    const QString text = m_pastes.readText();
    m_stage.input().moveTo(m_stage.aside());
    m_user.rest();
    QThread::msleep(kUnhurried);
    if (!offered || text != paragraph().join(QLatin1Char('\n')))
        return {};
    return millisecondsBetween(struck, *offered);
}

void TextRows::pressToClipboard()
{
    const auto window = m_stage.desktop().open({.pixels = QRect(kPlace, kPage),
                                                .kind = desktop::WindowKind::unmanaged,
                                                .picture = page()});
    m_stage.start({{QStringLiteral("autoCopy"), false}});
    Figure warm{.what = QStringLiteral("text of %1 characters, warm: press to clipboard")
                            .arg(paragraph().join(QString()).size()),
                .samples = {},
                .limit = kMostWarm,
                .yardstick = {},
                .yardstickSamples = {},
                .ratioLimit = {}};
    for (int round = 0; round < kRounds; ++round) {
        if (const auto time = read(kWarmedUp))
            warm.samples.push_back(*time);
    }
    m_figures.add(warm);
    Figure cold = warm;
    cold.what = QStringLiteral("the same without engine, two minutes after the overlay came");
    cold.limit = kMostCold;
    cold.samples.clear();
    for (int round = 0; round < kColdRounds; ++round) {
        if (const auto time = read(kUnused))
            cold.samples.push_back(*time);
    }
    m_figures.add(cold);
    m_stage.quit();
}

double TextRows::memoryAtRest()
{
    std::this_thread::sleep_for(kUnused);
    return Rest(m_stage.desktop().name(), m_stage.program().pid()).memory().anonymous;
}

void TextRows::afterTwoMinutes()
{
    const auto window = m_stage.desktop().open({.pixels = QRect(kPlace, kPage),
                                                .kind = desktop::WindowKind::unmanaged,
                                                .picture = page()});
    m_stage.start({{QStringLiteral("autoCopy"), false}});
    QThread::sleep(10);
    const double started =
        Rest(m_stage.desktop().name(), m_stage.program().pid()).memory().anonymous;
    m_user.select({kPlace, kPage});
    m_stage.input().tap(Qt::Key_Escape);
    const double before = memoryAtRest();
    for (int round = 0; round < kRounds; ++round)
        (void)read(kWarmedUp);
    const double after = memoryAtRest();
    m_figures.add({.what = QStringLiteral("private memory two minutes after ten readings, more "
                                          "than before the first"),
                   .unit = QStringLiteral("MiB"),
                   .samples = {after - before},
                   .limit = kMostLeft,
                   .yardstick = {},
                   .yardstickSamples = {},
                   .ratioLimit = {}});
    m_figures.note(QStringLiteral("    %1 MiB after start, %2 after a session without reading, %3 "
                                  "in the end")
                       .arg(started, 0, 'f', 2)
                       .arg(before, 0, 'f', 2)
                       .arg(after, 0, 'f', 2));
    m_stage.quit();
}

} // namespace brindlecam::bench
