#include "ScrollRows.h"

#include "Busy.h"
#include "Figures.h"
#include "MostMemory.h"
#include "NewFiles.h"
#include "PagePainter.h"

#include "desktop/support/Patience.h"
#include "pictures/PngWriter.h"

#include <QDir>
#include <QThread>

#include <algorithm>

namespace brindlecam::bench {

namespace {

// What is captured lies in the page's window with this much around it.
constexpr QMargins kAround(10, 10, 10, 10);

constexpr QRect kLoadArea{100, 60, 1600, 900};
constexpr int kLoadRounds = 3;
constexpr unsigned long kLoadTime = 4000; // milliseconds
constexpr int kNotch = 60;                // rows
constexpr unsigned long kBetweenNotches = 120;
constexpr double kMostLoad = 15; // per cent

constexpr QRect kTallArea{40, 60, 1920, 900};
constexpr int kTallRows = 20000;
constexpr int kTallStep = 382; // divides what is to be scrolled
constexpr unsigned long kBetweenSteps = 160;
constexpr int kTallRounds = 5;
constexpr int kSinglePicture = 1080; // rows
constexpr double kMostOfBody = 1.15;
constexpr double kMostOfSinglePictures = 1.1;
constexpr double kMebibyte = 1024 * 1024;

/// Milliseconds that it takes to encode these rows for the clipboard as pictures of a screen each.
double encodedOneByOne(const QImage& page)
{
    double all = 0;
    for (int row = 0; row < page.height(); row += kSinglePicture) {
        const QImage picture(page.constScanLine(row), page.width(),
                             std::min(kSinglePicture, page.height() - row), page.bytesPerLine(),
                             page.format());
        const auto from = Clock::now();
        if (PngWriter::encode(picture, {.cancelled = {}}).isEmpty())
            qFatal("a picture can't be encoded");
        all += millisecondsBetween(from, Clock::now());
    }
    return all;
}

} // namespace

ScrollRows::ScrollRows(Stage& stage, Figures& figures)
    : m_stage(stage)
    , m_figures(figures)
    , m_user(stage)
    , m_pastes(stage.desktop())
{
}

void ScrollRows::begin(const QImage& page, const QRect& area)
{
    m_page = page;
    m_area = area;
    const QRect place = area.marginsAdded(kAround);
    m_window = m_stage.desktop().open({.pixels = place, .kind = desktop::WindowKind::unmanaged});
    scrollTo(0);
    m_user.select(area);
    (void)m_user.choose(MarkHands::Action::scroll);
    const auto runs = [this] {
        const auto shown = m_stage.desktop().windows().shown(m_stage.program().pid());
        return !shown.empty() && std::ranges::none_of(shown, [this](const auto& window) {
            return window.pixels.size() == m_stage.pixels();
        });
    };
    if (!desktop::waitUntil(runs))
        qFatal("no long capture begins:\n%s", qPrintable(m_stage.program().log()));
    m_stage.input().moveTo(area.center());
    QThread::msleep(kUnhurried); // the first frame is there
}

void ScrollRows::scrollTo(int row)
{
    m_row = row;
    QImage shown(m_area.marginsAdded(kAround).size(), QImage::Format_RGB32);
    shown.fill(Qt::white);
    for (int y = 0; y < m_area.height(); ++y) {
        std::copy_n(m_page.constScanLine(row + y), m_page.bytesPerLine(),
                    shown.scanLine(y + kAround.top()) +
                        static_cast<std::ptrdiff_t>(kAround.left()) * 4);
    }
    m_window->paint(shown);
}

void ScrollRows::scrollOn(int times, int rows, unsigned long apart)
{
    for (int i = 0; i < times; ++i) {
        scrollTo(m_row + rows);
        QThread::msleep(apart);
    }
}

void ScrollRows::awaitEnd()
{
    if (!desktop::waitUntil(
            [this] { return m_stage.desktop().windows().shown(m_stage.program().pid()).empty(); }))
        qFatal("something of the program stays on the screen");
    m_window.reset();
    m_stage.awaitPage();
}

double ScrollRows::shareOfCore(const std::function<void()>& meanwhile) const
{
    const Busy busy(m_stage.program().pid());
    const double before = busy.allThreads();
    const auto from = Clock::now();
    meanwhile();
    return 100 * (busy.allThreads() - before) / millisecondsBetween(from, Clock::now());
}

void ScrollRows::load()
{
    constexpr int kNotches = static_cast<int>(kLoadTime / kBetweenNotches);
    m_stage.start();
    begin(test::PagePainter::interfacePage(
              {kLoadArea.width(), kLoadArea.height() + kLoadRounds * kNotches * kNotch}),
          kLoadArea);
    Figure rests{.what = QStringLiteral("load of a core by a page of 1600 × 900, nobody scrolls"),
                 .unit = QStringLiteral("%"),
                 .samples = {},
                 .limit = kMostLoad,
                 .yardstick = {},
                 .yardstickSamples = {},
                 .ratioLimit = {}};
    Figure scrolls = rests;
    scrolls.what = QStringLiteral("the same while it is scrolled by %1 rows every %2 ms")
                       .arg(kNotch)
                       .arg(kBetweenNotches);
    for (int round = 0; round < kLoadRounds; ++round) {
        rests.samples.push_back(shareOfCore([] { QThread::msleep(kLoadTime); }));
        scrolls.samples.push_back(
            shareOfCore([this] { scrollOn(kNotches, kNotch, kBetweenNotches); }));
    }
    m_pastes.forget();
    (void)m_stage.strike({Qt::Key_Return});
    // Who had lost the page would have had an easy time.
    const auto offered = m_pastes.awaitPng();
    m_stage.input().letGo();
    if (!offered || pngSize(m_pastes.readPng()) != m_page.size())
        scrolls.samples.clear();
    awaitEnd();
    m_stage.quit();
    m_figures.add(rests);
    m_figures.add(scrolls);
}

std::optional<ScrollRows::Delivery> ScrollRows::deliver(const QImage& page)
{
    const MostMemory most(m_stage.program().pid());
    NewFiles files(m_stage.program().folders().captures());
    begin(page, kTallArea);
    scrollOn((kTallRows - kTallArea.height()) / kTallStep, kTallStep, kBetweenSteps);
    QThread::msleep(kUnhurried);
    m_pastes.forget();
    const auto struck = m_stage.strike({Qt::Key_Return});
    const auto offered = m_pastes.awaitPng();
    const auto file = files.awaitPng();
    Delivery delivery;
    delivery.memory = most.growth();
    m_stage.input().letGo();
    const QByteArray png = m_pastes.readPng();
    awaitEnd();
    if (!offered || !file || pngSize(png) != page.size())
        return {};
    delivery.offered = millisecondsBetween(struck, *offered);
    delivery.pngBytes = double(png.size());
    return delivery;
}

void ScrollRows::tallPage()
{
    const QImage page = test::PagePainter::interfacePage({kTallArea.width(), kTallRows});
    m_stage.start();
    QDir().mkpath(m_stage.program().folders().captures());
    // The first session of all fetches what stays: that is no page's.
    m_user.select(kTallArea);
    m_stage.endSession();
    const double body = double(page.sizeInBytes()) / kMebibyte;
    Figure memory{.what = QStringLiteral("most private memory for 20,000 rows of 1920 pixels"),
                  .unit = QStringLiteral("MiB"),
                  .samples = {},
                  .limit = kMostOfBody * body,
                  .yardstick = QStringLiteral("the rows"),
                  .yardstickSamples = {body},
                  .ratioLimit = {}};
    Figure offered{
        .what = QStringLiteral("Return to these rows as one picture on the clipboard"),
        .samples = {},
        .limit = {},
        .yardstick =
            QStringLiteral("encoding them as pictures of %1 rows, same run").arg(kSinglePicture),
        .yardstickSamples = {},
        .ratioLimit = kMostOfSinglePictures};
    for (int round = 0; round < kTallRounds; ++round) {
        if (const auto delivery = deliver(page)) {
            memory.samples.push_back(delivery->memory);
            memory.limit = kMostOfBody * body + delivery->pngBytes / kMebibyte;
            offered.samples.push_back(delivery->offered);
        }
        for (int i = 0; i < kTallRounds; ++i) // it takes little, and varies
            offered.yardstickSamples.push_back(encodedOneByOne(page));
    }
    m_stage.quit();
    m_figures.add(memory);
    m_figures.add(offered);
}

} // namespace brindlecam::bench
