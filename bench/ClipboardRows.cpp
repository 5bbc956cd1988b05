#include "ClipboardRows.h"

#include "Figures.h"
#include "LibPng.h"
#include "NewFiles.h"

#include <QDir>
#include <QFile>
#include <QThread>

namespace brindlecam::bench {

namespace {

constexpr int kLargeWidth = 3840;
constexpr int kAreaRounds = 12;
constexpr int kFullScreenRounds = 8;
constexpr QRect kArea(300, 200, 800, 600);
constexpr unsigned long kNextSecond = 1100; // milliseconds; files are named by the second

} // namespace

ClipboardRows::ClipboardRows(Stage& stage, Figures& figures)
    : m_stage(stage)
    , m_figures(figures)
    , m_pastes(stage.desktop())
{
}

bool ClipboardRows::isLarge() const
{
    return m_stage.pixels().width() >= kLargeWidth;
}

ClipboardRows::Times ClipboardRows::areas(bool automaticCopy)
{
    m_stage.start({{QStringLiteral("autoCopy"), automaticCopy}});
    Times times;
    for (int round = 0; round < kAreaRounds; ++round) {
        m_stage.openSession();
        m_pastes.forget();
        m_stage.select(kArea);
        if (automaticCopy && !m_pastes.awaitPng())
            qFatal("nothing is copied automatically");
        QThread::msleep(kUnhurried);
        m_pastes.forget();

        const auto struck = m_stage.strike({Qt::Key_Return});
        const auto offered = m_pastes.awaitPng();
        const QByteArray png = m_pastes.readPng();
        const auto read = Clock::now();
        m_stage.input().letGo();
        if (offered && pngSize(png) == kArea.size()) {
            times.offered.push_back(millisecondsBetween(struck, *offered));
            times.read.push_back(millisecondsBetween(struck, read));
        }
        m_stage.input().moveTo(m_stage.aside());
        // The toast comes, and the keyboard is everybody's again.
        QThread::msleep(kUnhurried);
        m_stage.awaitPage();
    }
    m_stage.quit();
    return times;
}

void ClipboardRows::areaWithoutAutomaticCopy()
{
    const Times times = areas(false);
    std::vector<double> yardstick;
    for (int round = 0; round < 3; ++round)
        yardstick.push_back(encodeAndWriteByLibPng(m_stage.page().copy(kArea)).milliseconds);
    const QString what = QStringLiteral("Return after an 800 × 600 drag, automatic copy off: PNG ");
    m_figures.add({.what = what + QStringLiteral("offered"),
                   .samples = times.offered,
                   .limit = isPhoto() ? 20 : 8,
                   .yardstick = QStringLiteral("libpng + write"),
                   .yardstickSamples = yardstick,
                   .ratioLimit = {}});
    m_figures.add({.what = what + QStringLiteral("fully read"),
                   .samples = times.read,
                   .limit = 10,
                   .yardstick = QStringLiteral("libpng + write"),
                   .yardstickSamples = yardstick,
                   .ratioLimit = {},
                   .leastCounts = true});
}

void ClipboardRows::areaWithAutomaticCopy()
{
    const Times times = areas(true);
    m_figures.add(
        {.what = QStringLiteral("Return after an 800 × 600 drag, automatic copy on: PNG offered"),
         .samples = times.offered,
         .limit = 3,
         .yardstick = {},
         .yardstickSamples = {},
         .ratioLimit = {}});
}

std::optional<double> ClipboardRows::untilRead()
{
    m_pastes.forget();
    const auto struck = m_stage.strikeFullScreen();
    const auto offered = m_pastes.awaitPng();
    const QByteArray png = m_pastes.readPng();
    const auto read = Clock::now();
    m_stage.input().letGo();
    if (!offered || pngSize(png) != m_stage.pixels())
        return {};
    return millisecondsBetween(struck, read);
}

std::optional<double> ClipboardRows::untilFile()
{
    NewFiles files(m_stage.program().folders().captures());
    const auto struck = m_stage.strikeFullScreen();
    const auto file = files.awaitPng();
    const auto seen = Clock::now();
    m_stage.input().letGo();
    if (!file)
        return {};
    m_lastFile = *file;
    return millisecondsBetween(struck, seen);
}

void ClipboardRows::fullScreen()
{
    m_stage.start();
    QDir().mkpath(m_stage.program().folders().captures());
    Figure clipboard{.what = QStringLiteral("full screen: PNG readable on the clipboard"),
                     .samples = {},
                     .limit = isLarge() ? 120 : 45,
                     .yardstick = QStringLiteral("libpng + write"),
                     .yardstickSamples = {},
                     .ratioLimit = {},
                     .leastCounts = true};
    Figure file = clipboard;
    file.leastCounts = false;
    file.what = QStringLiteral("full screen: file complete");
    file.limit = isLarge() ? (isPhoto() ? 750 : 200) : (isPhoto() ? 200 : 60);
    // One after the other: reading must not hold up the writing.
    for (int round = 0; round < 2 * kFullScreenRounds; ++round) {
        Figure& figure = round % 2 == 0 ? clipboard : file;
        if (const auto time = round % 2 == 0 ? untilRead() : untilFile())
            figure.samples.push_back(*time);
        QThread::msleep(kNextSecond);
        m_stage.awaitPage();
    }
    LibPngRun libpng;
    for (int round = 0; round < 2; ++round) {
        libpng = encodeAndWriteByLibPng(m_stage.page());
        clipboard.yardstickSamples.push_back(libpng.milliseconds);
        file.yardstickSamples.push_back(libpng.milliseconds);
    }
    m_figures.add(clipboard);
    m_figures.add(file);
    m_figures.add({.what = QStringLiteral("size of the file"),
                   .unit = QStringLiteral("bytes"),
                   .samples = {double(QFile(m_lastFile).size())},
                   .limit = {},
                   .yardstick = QStringLiteral("libpng level 6 adaptive"),
                   .yardstickSamples = {double(libpng.bytes)},
                   .ratioLimit = isPhoto() ? 1.06 : 0.85});
    m_stage.quit();
}

} // namespace brindlecam::bench
