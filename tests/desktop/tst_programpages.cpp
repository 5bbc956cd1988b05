#include "desktop/support/CaptureTest.h"
#include "pages/PageText.h"

#include <QDir>
#include <QFile>
#include <QRegularExpression>

#include <algorithm>

namespace brindlecam::desktop {

/// Long captures of other programs' pages, scrolled by a person: what comes out is what the same
/// program paints in a window that is as tall as its page, pixel by pixel. What may differ by
/// itself lies outside of the rectangle: scroll bars, the caret of a terminal, a pager's prompt.
class TestProgramPages final : public CaptureTest {
    Q_OBJECT

private:
    enum class Program { pager, browser, gtkText, qtPage };

    static constexpr QSize kScreen{1280, 800};
    static constexpr QSize kTallScreen{1280, 6400};
    static constexpr QPoint kPlace{120, 60};  ///< of the program's window
    static constexpr QSize kWindow{760, 620}; ///< but the browser fills the screen
    static constexpr int kTallWindow = 6300;  ///< the height of one that holds the whole page
    static constexpr QRect kArea{140, 110, 620, 480};
    static constexpr int kBelow = 240;      ///< the window goes on no further below the area
    static constexpr int kLeastRows = 4000; ///< pages are that much longer than the area
    static constexpr int kMostNotches = 400;
    static constexpr int kNotchPatience = 2000; ///< ms until a page that is at its end is believed
    static constexpr int kReading = 700;        ///< ms
    static constexpr int kQuietLooks = 10;
    static constexpr int kBetweenLooks = 100; ///< ms

    std::unique_ptr<Process> m_reader;

    /// A program that shows its page on this desktop, in a window so tall.
    [[nodiscard]] static std::unique_ptr<Process> read(Program which, const Desktop& desktop,
                                                       int height)
    {
        QProcessEnvironment environment = desktop.environment();
        // Nothing else may start on account of it.
        environment.insert(QStringLiteral("NO_AT_BRIDGE"), QStringLiteral("1"));
        environment.insert(QStringLiteral("GTK_A11Y"), QStringLiteral("none"));
        environment.remove(QStringLiteral("LESS"));
        environment.insert(QStringLiteral("LESSHISTFILE"), QStringLiteral("-"));
        const QString home = environment.value(QStringLiteral("HOME"));
        const QString page = home + QStringLiteral("/page.html");
        QFile file(page);
        if (!file.open(QIODevice::WriteOnly) || file.write(content(which)) < 0)
            qFatal("the page can't be written: %s", qPrintable(file.errorString()));
        file.close();
        const QStringList command = commandLine(which, page, home, height);
        return std::make_unique<Process>(command.front(), command.mid(1), environment);
    }
    [[nodiscard]] static QByteArray content(Program which)
    {
        switch (which) {
        case Program::pager:
            return PageText::colouredLines(400, 110);
        case Program::gtkText:
            return PageText::lines(290, 90);
        case Program::browser:
        case Program::qtPage:
            return PageText::html(26);
        }
        Q_UNREACHABLE();
    }
    [[nodiscard]] static QStringList commandLine(Program which, const QString& page,
                                                 const QString& home, int height)
    {
        const QStringList place{QString::number(kPlace.x()), QString::number(kPlace.y()),
                                QString::number(kWindow.width()), QString::number(height)};
        switch (which) {
        case Program::pager: {
            constexpr int kLine = 13; // pixels
            const QString geometry =
                QStringLiteral("120x%1+%2+%3").arg(height / kLine).arg(kPlace.x()).arg(kPlace.y());
            return QStringList{QStringLiteral("xterm"), QStringLiteral("-fn"),
                               QStringLiteral("fixed"), QStringLiteral("-geometry"), geometry} +
                   QStringLiteral("-e less --mouse --wheel-lines=3 --RAW-CONTROL-CHARS --tilde "
                                  "--clear-screen")
                       .split(QLatin1Char(' ')) +
                   QStringList{page};
        }
        case Program::browser:
            return QStringLiteral("chromium --no-sandbox --kiosk --enable-smooth-scrolling "
                                  "--no-first-run --no-default-browser-check "
                                  "--password-store=basic --disable-background-networking "
                                  "--disable-component-update --disable-sync "
                                  "--disable-dev-shm-usage --force-device-scale-factor=1")
                       .split(QLatin1Char(' ')) +
                   QStringList{QStringLiteral("--user-data-dir=%1/chromium").arg(home),
                               QStringLiteral("file://%1").arg(page)};
        case Program::gtkText:
            return QStringList{qEnvironmentVariable("BRINDLECAM_GTK_PAGE"), page} + place;
        case Program::qtPage:
            return QStringList{qEnvironmentVariable("BRINDLECAM_QT_PAGE"), page} + place;
        }
        Q_UNREACHABLE();
    }

    [[nodiscard]] static bool isBlank(const QImage& picture)
    {
        QImage plain(picture.size(), picture.format());
        plain.fill(picture.pixel(0, 0));
        return samePixels(picture, plain);
    }

    /// The screen on which the program shows the whole page; null when it never comes to rest.
    [[nodiscard]] static QImage paintedWhole(Program which)
    {
        const auto tall = Desktop::start({.screen = {.pixels = kTallScreen}});
        const auto reader = read(which, *tall, kTallWindow);
        QImage last;
        int quiet = 0;
        const auto atRest = [&] {
            QImage now = tall->screen().grab();
            const bool same = now == last && !isBlank(now.copy(kArea));
            quiet = same ? quiet + 1 : 0;
            last = std::move(now);
            QTest::qSleep(kBetweenLooks);
            return quiet >= kQuietLooks;
        };
        constexpr int kStartPatience = 4 * kPatience;
        if (!waitUntil(atRest, kStartPatience)) {
            qWarning("the page does not come to rest:\n%s", reader->log().constData());
            return {};
        }
        return last;
    }

    /// The rows of the whole page down to the end of what is seen now; null when that is not in
    /// there, or not once, or not the end.
    [[nodiscard]] QImage pageToHere(const QImage& whole)
    {
        const QImage seen = screen().grab(kArea);
        const QImage columns = whole.copy(QRect(kArea.left(), 0, kArea.width(), whole.height()));
        std::vector<int> found;
        for (int top = kArea.top(); top + kArea.height() <= whole.height(); ++top) {
            // Most places are ruled out by their first row.
            if (samePixels(columns.copy(0, top, kArea.width(), 1),
                           seen.copy(0, 0, kArea.width(), 1)) &&
                samePixels(columns.copy(0, top, kArea.width(), kArea.height()), seen))
                found.push_back(top);
        }
        if (found.size() != 1) {
            qWarning("what is seen at the end is %d times in the whole page", int(found.size()));
            return {};
        }
        const int end = found.front() + kArea.height();
        constexpr int kLooked = 130; // rows
        const QRect beyond(kArea.left(), end + kBelow, kArea.width(), kLooked);
        if (!whole.rect().contains(beyond) || !isBlank(whole.copy(beyond))) {
            qWarning("the page goes on behind row %d", end);
            return {};
        }
        return whole.copy(QRect(kArea.topLeft(), QPoint(kArea.right(), end - 1)));
    }

    /// Selects the area and presses the button under it.
    [[nodiscard]] bool begins()
    {
        startProgram();
        if (!openArea())
            return false;
        select(kArea);
        if (!press("Captura con desplazamiento") || !sessionIsOver() ||
            !placeOf("Listo", ControlKind::button).isValid())
            return false;
        // Nothing tells when the page's first screenful has been taken; it is by the time that a
        // person has read what the panel says.
        QTest::qSleep(kReading);
        return true;
    }

    /// How high the page is by now, as the panel tells; 0 while it says something else.
    [[nodiscard]] int toldHeight()
    {
        static const QRegularExpression told(QStringLiteral("^Capturando… (\\d+) px de alto"));
        for (const Control& control : controls().shown()) {
            const auto match = told.match(control.name);
            if (match.hasMatch())
                return match.captured(1).toInt();
        }
        return 0;
    }

    /// Turns the wheel notch by notch, each as soon as the panel has told of the one before, until
    /// the page moves no further. It may well glide still.
    [[nodiscard]] bool scrollsToTheEnd()
    {
        input().moveTo(kArea.center());
        for (int notch = 0; notch < kMostNotches; ++notch) {
            const int height = toldHeight();
            const QImage before = screen().grab(kArea);
            input().press(Button::wheelDown);
            input().release(Button::wheelDown);
            const auto grows = [&] { return toldHeight() > height; };
            if (waitUntil(grows, kNotchPatience))
                continue;
            if (samePixels(screen().grab(kArea), before))
                return true;
            for (const Control& control : controls().shown())
                qWarning("shown: %s", qPrintable(control.name));
            return false;
        }
        return false;
    }

    /// Where two pictures part, for whoever has to find out why.
    [[nodiscard]] static QByteArray comparison(const QImage& got, const QImage& expected)
    {
        QByteArray text = QByteArray::number(got.height()) + " rows instead of " +
                          QByteArray::number(expected.height());
        const int rows = std::min(got.height(), expected.height());
        int first = -1;
        int all = 0;
        for (int y = 0; y < rows && got.width() == expected.width(); ++y) {
            const QRect row(0, y, got.width(), 1);
            if (samePixels(got.copy(row), expected.copy(row)))
                continue;
            first = first < 0 ? y : first;
            ++all;
        }
        text +=
            ", " + QByteArray::number(all) + " differ from " + QByteArray::number(first) + " on";
        const QString folder = qEnvironmentVariable("BRINDLECAM_ARTIFACTS");
        if (!folder.isEmpty() && QDir().mkpath(folder)) {
            const QString name =
                folder + QLatin1Char('/') + QString::fromLatin1(QTest::currentDataTag());
            got.save(name + QStringLiteral(".got.png"));
            expected.save(name + QStringLiteral(".expected.png"));
        }
        return text;
    }

private Q_SLOTS:
    void aPageIsAsItsProgramPaintsItWhole_data()
    {
        QTest::addColumn<Program>("which");
        QTest::newRow("a pager in a terminal") << Program::pager;
        QTest::newRow("a browser") << Program::browser;
        QTest::newRow("a text in GTK") << Program::gtkText;
        QTest::newRow("a page in Qt") << Program::qtPage;
    }
    void aPageIsAsItsProgramPaintsItWhole()
    {
        QFETCH(Program, which);
        const QImage whole = paintedWhole(which);
        QVERIFY(!whole.isNull());
        m_reader.reset();
        useDesktop({.screen = {.pixels = kScreen}, .accessibility = Accessibility::on});
        m_reader = read(which, desktop(), kWindow.height());
        const auto showsTheBeginning = [&] {
            return samePixels(screen().grab(kArea), whole.copy(kArea));
        };
        QVERIFY2(waitUntil(showsTheBeginning), m_reader->log().constData());

        QVERIFY(begins());
        QVERIFY(scrollsToTheEnd());
        const QImage page = pageToHere(whole);
        QVERIFY(!page.isNull());
        QVERIFY(page.height() >= kArea.height() + kLeastRows);
        const int told = toldHeight();
        input().tap(Qt::Key_Return);
        QVERIFY(toastSays(
            QStringLiteral("Captura larga copiada y guardada (%1 px de alto)").arg(told)));
        const QImage got = pasted();
        if (!samePixels(got, page))
            QFAIL(comparison(got, page).constData());
        m_reader.reset();
    }
};

} // namespace brindlecam::desktop

QTEST_GUILESS_MAIN(brindlecam::desktop::TestProgramPages)

#include "tst_programpages.moc"
