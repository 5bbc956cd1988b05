// Covers CapturePreview, PreviewWindow.
#include "DrawerFixture.h"
#include "drawer/CapturePreview.h"
#include "drawer/PreviewWindow.h"
#include "support/TestCase.h"

#include <QPointer>

#include <algorithm>

namespace brindlecam {

using test::DrawerFixture;
using test::kDenseScreen;
using test::kDrawerScreen;

namespace {

/// Frames of a pixel each, black and then white, a tenth of a second each, for ever or once.
QByteArray gif(bool forEver, int frames = 2)
{
    const char* loop = "21ff0b4e45545343415045322e300301000000";
    QByteArray bytes = QByteArray::fromHex("47494638396101000100800000000000ffffff");
    if (forEver)
        bytes += QByteArray::fromHex(loop);
    for (int i = 0; i < frames; ++i) {
        bytes += QByteArray::fromHex("21f904000a0000002c0000000001000100000202");
        bytes += QByteArray::fromHex(i % 2 == 0 ? "440100" : "4c0100");
    }
    return bytes + QByteArray::fromHex("3b");
}

struct PreviewDesk : DrawerFixture {
    int jobs = 0; ///< run so far
    CapturePreview preview{platform, toast, activity, [this](std::function<void()> job) {
                               ++jobs;
                               executor(std::move(job));
                           }};

    [[nodiscard]] PreviewWindow& window() const { return *preview.window(); }
    void show(const QString& path, const ScreenInfo& screen = kDrawerScreen)
    {
        preview.show(path, screen);
        test::sendAllPostedEvents();
    }
    bool leave() { return preview.leave(ScreenCover::Focus::isTaken); }
    QString addGif(bool forEver, int frames = 2)
    {
        history.add(gif(forEver, frames), QStringLiteral("gif"));
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

    void standsInTheMiddleOfItsScreen_data()
    {
        QTest::addColumn<ScreenInfo>("screen");
        QTest::addColumn<QSize>("picture");
        QTest::addColumn<QRect>("place");
        QTest::newRow("pixel by pixel")
            << kDrawerScreen << QSize(800, 600) << QRect(560, 220, 800, 600);
        QTest::newRow("at scale 2 also")
            << kDenseScreen << QSize(1600, 1200) << QRect(2560, 300, 1600, 1200);
        QTest::newRow("a large one")
            << kDrawerScreen << QSize(3456, 1872) << QRect(96, 52, 1728, 936);
        QTest::newRow("a tall one")
            << kDrawerScreen << QSize(1000, 9360) << QRect(800, 52, 320, 936);
        QTest::newRow("a small one") << kDrawerScreen << QSize(20, 10) << QRect(800, 400, 320, 240);
        QTest::newRow("a small one at scale 2")
            << kDenseScreen << QSize(20, 10) << QRect(3040, 660, 640, 480);
    }
    void standsInTheMiddleOfItsScreen()
    {
        QFETCH(ScreenInfo, screen);
        QFETCH(QSize, picture);
        QFETCH(QRect, place);
        PreviewDesk desk;
        desk.show(desk.add(picture), screen);
        QTRY_VERIFY(desk.window().isVisible());
        QCOMPARE(desk.panels.shown.back().native, place);
    }

    void showsAllOfItWhereThereIsLessRoom_data()
    {
        QTest::addColumn<QSize>("room");
        QTest::addColumn<QRect>("seen");
        QTest::newRow("as made") << QSize(700, 500) << QRect(0, 0, 700, 500);
        QTest::newRow("a pixel less") << QSize(699, 499) << QRect(0, 0, 699, 499);
        QTest::newRow("narrower") << QSize(350, 500) << QRect(0, 125, 350, 250);
        QTest::newRow("half of it") << QSize(350, 250) << QRect(0, 0, 350, 250);
        QTest::newRow("more") << QSize(900, 700) << QRect(100, 100, 700, 500);
    }
    void showsAllOfItWhereThereIsLessRoom()
    {
        QFETCH(QSize, room);
        QFETCH(QRect, seen);
        PreviewDesk desk;
        desk.show(desk.add({700, 500}, Qt::green));
        QTRY_VERIFY(desk.window().isVisible());
        desk.window().resize(room);
        const QImage look = desk.window().grab().toImage();
        for (const QPoint corner :
             {seen.topLeft(), seen.topRight(), seen.bottomLeft(), seen.bottomRight()})
            QCOMPARE(look.pixelColor(corner), QColor(Qt::green));
        const QPoint middle = seen.center();
        for (const QPoint outside :
             {QPoint(middle.x(), seen.top() - 1), QPoint(middle.x(), seen.bottom() + 1),
              QPoint(seen.left() - 1, middle.y()), QPoint(seen.right() + 1, middle.y())})
            QVERIFY(!look.rect().contains(outside) ||
                    look.pixelColor(outside) != QColor(Qt::green));
    }

    void aSmallerPictureIsTheWholeOne()
    {
        PreviewDesk desk;
        QImage halves(800, 400, QImage::Format_RGB32);
        halves.fill(Qt::red);
        for (int y = 0; y < 400; ++y)
            std::fill_n(reinterpret_cast<QRgb*>(halves.scanLine(y)), 100, qRgb(0, 0, 255));
        desk.history.add(PngWriter::encode(halves, {.cancelled = {}}), QStringLiteral("png"));
        desk.show(desk.history.items().constFirst());
        QTRY_VERIFY(desk.window().isVisible());
        desk.window().resize(400, 200);
        const QImage look = desk.window().grab().toImage();
        QCOMPARE(look.pixelColor(40, 100), QColor(Qt::blue));
        QCOMPARE(look.pixelColor(60, 100), QColor(Qt::red));
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

    void aSingleFrameIsNotReadAgainAndAgain()
    {
        PreviewDesk desk;
        desk.show(desk.addGif(true, 1));
        QTRY_COMPARE(desk.jobs, 2); // and then there is no other
        QTest::qWait(300);
        QCOMPARE(desk.jobs, 2);
        QVERIFY(desk.window().isVisible());
    }

    void nothingIsReadWhileNobodySeesIt()
    {
        PreviewDesk desk;
        desk.show(desk.addGif(true));
        QTRY_VERIFY(desk.jobs > 3);
        desk.window().hide();
        test::sendAllPostedEvents();
        const int before = desk.jobs;
        QTest::qWait(300);
        QVERIFY(desk.jobs <= before + 1);
        desk.window().show();
        QTRY_VERIFY(desk.jobs > before + 3);
    }
};

BRINDLECAM_TEST(TestPreviewWindow);

} // namespace brindlecam

#include "tst_previewwindow.moc"
