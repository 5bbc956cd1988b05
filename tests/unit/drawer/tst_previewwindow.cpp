// Covers CapturePreview, PreviewWindow.
#include "DrawerFixture.h"
#include "drawer/CapturePreview.h"
#include "drawer/PreviewWindow.h"
#include "support/TestCase.h"

#include <QPointer>

namespace brindlecam {

using test::DrawerFixture;
using test::kDenseScreen;
using test::kDrawerScreen;

namespace {

/// Two frames of a pixel each, black and white, a tenth of a second each, for ever or once.
QByteArray gif(bool forEver)
{
    const char* loop = "21ff0b4e45545343415045322e300301000000";
    return QByteArray::fromHex("474946383961010001008000000000"
                               "00ffffff") +
           (forEver ? QByteArray::fromHex(loop) : QByteArray()) +
           QByteArray::fromHex("21f904000a0000002c00000000010001000002024401"
                               "00"
                               "21f904000a0000002c000000000100010000020"
                               "24c0100"
                               "3b");
}

struct PreviewDesk : DrawerFixture {
    CapturePreview preview{platform, toast, activity,
                           [this](std::function<void()> job) { executor(std::move(job)); }};

    [[nodiscard]] PreviewWindow& window() const { return *preview.window(); }
    void show(const QString& path, const ScreenInfo& screen = kDrawerScreen)
    {
        preview.show(path, screen);
        test::sendAllPostedEvents();
    }
    bool leave() { return preview.leave(ScreenCover::Focus::isTaken); }
    QString addGif(bool forEver)
    {
        history.add(gif(forEver), QStringLiteral("gif"));
        return history.items().constFirst();
    }
    [[nodiscard]] QColor middle() const
    {
        return window().grab().toImage().pixelColor(window().rect().center());
    }
};

} // namespace

class TestPreviewWindow final : public test::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void isTheDesktopsOwnWhereItHasOne()
    {
        PreviewDesk desk;
        desk.opener.previews = true;
        const QString entry = desk.add();
        desk.show(entry);
        QCOMPARE(desk.opener.previewed, QStringList{entry});
        QVERIFY(!desk.preview.window());
        QVERIFY(desk.leave());
        QCOMPARE(desk.opener.previewsEnded, 1);
        QVERIFY(!desk.leave());
        QCOMPARE(desk.opener.previewsEnded, 1);
    }

    void isTakenBackBeforeTheDesktopHasAnswered()
    {
        PreviewDesk desk;
        desk.opener.previews = true;
        desk.opener.answersLate = true;
        desk.show(desk.add());
        QVERIFY(!desk.leave()); // nothing could be seen
        QCOMPARE(desk.opener.previewsEnded, 1);
        desk.opener.answerPreview();
        test::sendAllPostedEvents();
        QVERIFY(!desk.leave());
        QCOMPARE(desk.opener.previewsEnded, 1);
    }

    void isNotThereOnceTheUserHasClosedIt()
    {
        PreviewDesk desk;
        desk.opener.previews = true;
        desk.show(desk.add());
        desk.opener.previewGoes();
        test::sendAllPostedEvents();
        QVERIFY(!desk.preview.window()); // it has been shown already
        QVERIFY(!desk.leave());
        QCOMPARE(desk.opener.previewsEnded, 0);
    }

    void isAWindowOfOursElsewhere()
    {
        PreviewDesk desk;
        const QString entry = desk.add({700, 500}, Qt::green);
        desk.show(entry);
        QTRY_VERIFY(desk.window().isVisible());
        QCOMPARE(desk.panels.roles.back(), PanelRole::dialog);
        QCOMPARE(desk.window().size(), QSize(700, 500));
        QCOMPARE(desk.middle(), QColor(Qt::green));
        QVERIFY(entry.endsWith(desk.window().windowTitle()));
        QCOMPARE(desk.window().accessibleName(), QStringLiteral("Captura en grande"));
    }

    void fitsItsScreen_data()
    {
        QTest::addColumn<ScreenInfo>("screen");
        QTest::addColumn<QSize>("picture");
        QTest::addColumn<QSize>("window");
        QTest::newRow("pixel by pixel") << kDrawerScreen << QSize(800, 600) << QSize(800, 600);
        QTest::newRow("at scale 2 also") << kDenseScreen << QSize(1600, 1200) << QSize(800, 600);
        QTest::newRow("a large one") << kDrawerScreen << QSize(3456, 1872) << QSize(1728, 936);
        QTest::newRow("a tall one") << kDrawerScreen << QSize(1000, 9360) << QSize(320, 936);
        QTest::newRow("a small one") << kDrawerScreen << QSize(20, 10) << QSize(320, 240);
    }
    void fitsItsScreen()
    {
        QFETCH(ScreenInfo, screen);
        QFETCH(QSize, picture);
        QFETCH(QSize, window);
        PreviewDesk desk;
        desk.show(desk.add(picture), screen);
        QTRY_VERIFY(desk.window().isVisible());
        QCOMPARE(desk.window().size(), window);
    }

    void closesBySpaceAndEscape_data()
    {
        QTest::addColumn<Qt::Key>("key");
        QTest::newRow("space") << Qt::Key_Space;
        QTest::newRow("escape") << Qt::Key_Escape;
    }
    void closesBySpaceAndEscape()
    {
        QFETCH(Qt::Key, key);
        PreviewDesk desk;
        desk.show(desk.add());
        QTRY_VERIFY(desk.window().isVisible());
        QKeyEvent repeat(QEvent::KeyPress, key, Qt::NoModifier, QString(), true);
        QCoreApplication::sendEvent(&desk.window(), &repeat); // of the press that opened it
        QVERIFY(desk.preview.window());
        QTest::keyClick(&desk.window(), Qt::Key_A);
        QVERIFY(desk.preview.window());
        const QPointer<PreviewWindow> window(desk.preview.window());
        QTest::keyClick(&desk.window(), key);
        QVERIFY(!desk.preview.window());
        QVERIFY(!window->isVisible());
        QCOMPARE(desk.front.givenBack, 1);
        QVERIFY(!desk.leave());
    }

    void anotherOneTakesItsPlace()
    {
        PreviewDesk desk;
        desk.show(desk.add({400, 300}, Qt::red));
        QTRY_VERIFY(desk.window().isVisible());
        const QPointer<PreviewWindow> first(desk.preview.window());
        desk.show(desk.add({400, 300}, Qt::blue));
        QVERIFY(!first || !first->isVisible());
        QTRY_COMPARE(desk.middle(), QColor(Qt::blue));
        QCOMPARE(desk.front.givenBack, 0); // the focus goes on to the next one
    }

    void aFileThatIsNoPictureIsTold_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::newRow("text") << QByteArray("no es una imagen");
        QTest::newRow("cut") << gif(true).left(20);
    }
    void aFileThatIsNoPictureIsTold()
    {
        QFETCH(QByteArray, bytes);
        PreviewDesk desk;
        desk.history.add(bytes, QStringLiteral("gif"));
        desk.show(desk.history.items().constFirst());
        QTRY_COMPARE(desk.said(), QStringLiteral("No se pudo leer la captura"));
        QVERIFY(!desk.preview.window());
        QCOMPARE(desk.front.givenBack, 1);
    }

    void leavesForACaptureAndStaysGone()
    {
        PreviewDesk desk;
        desk.show(desk.add());
        QTRY_VERIFY(desk.window().isVisible());
        QVERIFY(desk.leave());
        QVERIFY(!desk.preview.window());
        QCOMPARE(desk.front.givenBack, 0); // the capture's business
        // Before the desktop has answered, and while the picture is being read.
        desk.preview.show(desk.add(), kDrawerScreen);
        QVERIFY(!desk.leave());
        test::GatedExecutor gate;
        desk.executor = gate.executor();
        desk.show(desk.history.items().constFirst());
        QVERIFY(!desk.leave());
        for (const auto& job : gate.jobs)
            job();
        test::sendAllPostedEvents();
        QVERIFY(!desk.preview.window());
        QCOMPARE(desk.panels.visibleNow(), 0);
    }

    void givesTheKeyboardBackWhereNobodyElseTakesIt_data()
    {
        QTest::addColumn<ScreenCover::Focus>("focus");
        QTest::addColumn<bool>("active");
        QTest::addColumn<int>("givenBack");
        QTest::newRow("to whoever had it") << ScreenCover::Focus::goesBack << true << 1;
        QTest::newRow("the capture takes it") << ScreenCover::Focus::isTaken << true << 0;
        QTest::newRow("another window has it") << ScreenCover::Focus::goesBack << false << 0;
    }
    void givesTheKeyboardBackWhereNobodyElseTakesIt()
    {
        QFETCH(ScreenCover::Focus, focus);
        QFETCH(bool, active);
        QFETCH(int, givenBack);
        PreviewDesk desk;
        desk.show(desk.add());
        QTRY_VERIFY(desk.window().isVisible());
        QWidget other;
        other.show();
        QWidget& front = active ? static_cast<QWidget&>(desk.window()) : other;
        front.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&front));
        QVERIFY(desk.preview.leave(focus));
        QCOMPARE(desk.front.givenBack, givenBack);
    }

    void animationsPlay()
    {
        PreviewDesk desk;
        desk.show(desk.addGif(true));
        QTRY_VERIFY(desk.window().isVisible());
        for (int round = 0; round < 3; ++round) {
            QTRY_COMPARE(desk.middle(), QColor(Qt::white));
            QTRY_COMPARE(desk.middle(), QColor(Qt::black));
        }
    }

    void animationsEndWhereTheirFileSaysSo()
    {
        PreviewDesk desk;
        desk.show(desk.addGif(false));
        QTRY_VERIFY(desk.window().isVisible());
        QTRY_COMPARE(desk.middle(), QColor(Qt::white));
        QTest::qWait(300);
        QCOMPARE(desk.middle(), QColor(Qt::white));
    }

    void nothingIsReadWhileNobodySeesIt()
    {
        PreviewDesk desk;
        int jobs = 0;
        desk.executor = [&jobs](const std::function<void()>& job) {
            ++jobs;
            job();
        };
        CapturePreview preview(desk.platform, desk.toast, desk.activity, desk.executor);
        preview.show(desk.addGif(true), kDrawerScreen);
        test::sendAllPostedEvents();
        QTRY_VERIFY(jobs > 3);
        preview.window()->hide();
        test::sendAllPostedEvents();
        const int before = jobs;
        QTest::qWait(300);
        QVERIFY(jobs <= before + 1);
        preview.window()->show();
        QTRY_VERIFY(jobs > before + 3);
    }
};

BRINDLECAM_TEST(TestPreviewWindow);

} // namespace brindlecam

#include "tst_previewwindow.moc"
