#include "desktop/support/CaptureTest.h"

#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QRegularExpression>

namespace brindlecam::desktop {

/// Captures of the whole screen: from the trigger to clipboard, file, history and toast.
class TestFullScreen final : public CaptureTest {
    Q_OBJECT

private:
    /// Runs ImageMagick on a picture and returns what it writes.
    static QByteArray magick(const QStringList& arguments, const QByteArray& picture)
    {
        QProcess process;
        process.start(QStringLiteral("convert"), arguments);
        process.write(picture);
        process.closeWriteChannel();
        process.waitForFinished(kPatience);
        return process.readAllStandardOutput();
    }

    void capture() { QCOMPARE(program().command({QStringLiteral("fullScreen")}).exitCode, 0); }

private Q_SLOTS:
    void screenGoesEverywherePixelForPixel_data()
    {
        QTest::addColumn<bool>("byHotKey");
        QTest::newRow("by hot key") << true;
        QTest::newRow("by command") << false;
    }
    void screenGoesEverywherePixelForPixel()
    {
        QFETCH(bool, byHotKey);
        usePatternedDesktop();
        const auto board =
            desktop().open({.pixels = QRect(200, 150, 500, 400),
                            .picture = checkerboard({64, 64}, 1, Qt::black, Qt::white)});
        QVERIFY(becomesActive(*board));
        startProgram();
        input().moveTo(board->pixels().center()); // it must not be in the picture
        const QImage before = screen().grabAtRest();
        if (byHotKey)
            pressHotKey(kFullScreenKey);
        else
            capture();
        QVERIFY(isPasted(before));
        QVERIFY(isOnlyCapture(before));
        QVERIFY(isOnlyInHistory(before));
        static const QRegularExpression name(
            QStringLiteral("^Brindlecam \\d{4}-\\d\\d-\\d\\d \\d\\d\\.\\d\\d\\.\\d\\d\\.png$"));
        QVERIFY(name.match(QFileInfo(captures().front()).fileName()).hasMatch());
        QVERIFY(overlays().empty());
    }

    void pngComesBeforeTiffOnTheClipboard()
    {
        usePatternedDesktop();
        startProgram();
        const QImage before = screen().grabAtRest();
        capture();
        QVERIFY(isPasted(before));
        Clipboard& reader = desktop().clipboard();
        const QByteArrayList targets = reader.formats();
        QVERIFY(targets.contains("image/tiff"));
        QVERIFY(targets.indexOf("image/png") < targets.indexOf("image/tiff"));
    }

    void picturesCarryTheScreensDensity_data()
    {
        QTest::addColumn<QString>("scale");
        QTest::addColumn<int>("dotsPerInch");
        QTest::newRow("1") << QStringLiteral("1") << 72;
        QTest::newRow("1.5") << QStringLiteral("1.5") << 108;
        QTest::newRow("2") << QStringLiteral("2") << 144;
    }
    void picturesCarryTheScreensDensity()
    {
        QFETCH(QString, scale);
        QFETCH(int, dotsPerInch);
        usePatternedDesktop({.screen = {.pixels = {600, 400}}});
        program().setScales(scale);
        startProgram();
        const QImage before = screen().grabAtRest();
        capture();
        QVERIFY(isPasted(before));
        Clipboard& reader = desktop().clipboard();
        const QByteArray tiff = reader.read("image/tiff").value_or(QByteArray());
        const QByteArray png = reader.read("image/png").value_or(QByteArray());
        for (const auto& [format, bytes] : {std::pair("tiff:-", tiff), std::pair("png:-", png)}) {
            const QString input = QString::fromLatin1(format);
            const QByteArray said =
                magick({input, QStringLiteral("-units"), QStringLiteral("PixelsPerInch"),
                        QStringLiteral("-format"),
                        QStringLiteral("%[fx:round(resolution.x)] %w %h"), QStringLiteral("info:")},
                       bytes);
            QCOMPARE(said, QStringLiteral("%1 600 400").arg(dotsPerInch).toLatin1());
            const QByteArray rgb = magick(
                {input, QStringLiteral("-depth"), QStringLiteral("8"), QStringLiteral("rgb:-")},
                bytes);
            QCOMPARE(rgb.size(), 600 * 400 * 3);
            const QImage decoded(reinterpret_cast<const uchar*>(rgb.constData()), 600, 400, 600 * 3,
                                 QImage::Format_RGB888);
            QVERIFY(samePixels(decoded, before));
        }
    }

    void toastLiesLowInTheMiddleAndGoesByItself()
    {
        usePatternedDesktop();
        startProgram();
        const QImage before = screen().grabAtRest();
        QElapsedTimer sinceTrigger;
        sinceTrigger.start();
        pressHotKey(kFullScreenKey);
        QVERIFY(toastComes());
        const QRect place = toasts().front().pixels;
        QVERIFY(!toasts().front().managed);
        QVERIFY(qAbs(place.center().x() - before.width() / 2) <= 1);
        QVERIFY(qAbs(place.y() + place.height() - (before.height() - 80)) <= 1);
        QVERIFY(waitUntil([&] { return screen().grab(place) != before.copy(place); }));
        QVERIFY(toastIsGone());
        // It stays for one second and fades for 0.3; from the trigger it can't be less.
        QVERIFY(sinceTrigger.elapsed() >= 1250);
        QVERIFY(waitUntil([&] { return samePixels(screen().grab(), before); }));
    }

    void toastLiesAboveEveryWindowAndTakesNeitherClicksNorFocus_data()
    {
        QTest::addColumn<bool>("fullScreen");
        QTest::newRow("a window") << false;
        QTest::newRow("a full-screen window") << true;
    }
    void toastLiesAboveEveryWindowAndTakesNeitherClicksNorFocus()
    {
        QFETCH(const bool, fullScreen);
        usePatternedDesktop();
        const auto below = desktop().open({.pixels = QRect(0, 400, 1280, 400)});
        startProgram();
        QVERIFY(getsFocus(*below));
        if (fullScreen) {
            desktop().pager().setFullScreen(below->id(), true);
            QVERIFY(waitUntil([&] { return below->pixels() == screen().pixels(); }));
        }
        const QImage before = screen().grabAtRest();
        pressHotKey(kFullScreenKey);
        QVERIFY(toastComes());
        const QRect toast = toasts().front().pixels;
        QVERIFY(waitUntil([&] { return screen().grab(toast) != before.copy(toast); }));
        const QPoint place = toast.center();
        below->forget();
        input().click(place);
        input().tap(Qt::Key_A);
        QVERIFY(
            waitUntil([&] { return below->clicks().size() == 1 && below->keys().size() == 1; }));
        QCOMPARE(below->clicks()[0].place, place - below->pixels().topLeft());
        QVERIFY(below->hasFocus());
    }

    void toastIsNotInTheNextPicture()
    {
        usePatternedDesktop();
        startProgram();
        const QImage before = screen().grabAtRest();
        pressHotKey(kFullScreenKey);
        QVERIFY(toastComes());
        const auto first = desktop().clipboard().read("image/png");
        QVERIFY(first.has_value());
        pressHotKey(kFullScreenKey);
        QVERIFY(waitUntil([this] { return history().size() == 2; }));
        QVERIFY(waitUntil([&] { return samePixels(QImage(history().back()), before); }));
        QVERIFY(isPasted(before));
    }

    void screenUnderThePointerIsTaken_data()
    {
        QTest::addColumn<QPoint>("pointer");
        QTest::addColumn<QRect>("monitor");
        const QRect left(0, 0, 800, 600);
        const QRect right(800, 100, 640, 480);
        QTest::newRow("left") << QPoint(799, 300) << left;
        QTest::newRow("right") << QPoint(800, 300) << right;
        QTest::newRow("in no screen") << QPoint(1000, 20) << left;
    }
    void screenUnderThePointerIsTaken()
    {
        QFETCH(QPoint, pointer);
        QFETCH(QRect, monitor);
        usePatternedDesktop(
            {.screen = {.pixels = {1440, 600},
                        .monitors = {{QStringLiteral("LEFT"), QRect(0, 0, 800, 600)},
                                     {QStringLiteral("RIGHT"), QRect(800, 100, 640, 480)}}}});
        startProgram();
        input().moveTo(pointer);
        const QImage before = screen().grabAtRest();
        pressHotKey(kFullScreenKey);
        QVERIFY(isPasted(before.copy(monitor)));
        QVERIFY(isOnlyCapture(before.copy(monitor)));
        QVERIFY(toastComes());
        QVERIFY(monitor.contains(toasts().front().pixels));
    }

    void folderThatCannotBeWrittenLeavesClipboardAndHistory()
    {
        usePatternedDesktop();
        const QString inTheWay = program().folders().home() + QStringLiteral("/file");
        QFile file(inTheWay);
        QVERIFY(file.open(QIODevice::WriteOnly));
        program().writeSettings(
            {{QStringLiteral("saveFolder"), inTheWay + QStringLiteral("/captures")}});
        startProgram();
        const QImage before = screen().grabAtRest();
        pressHotKey(kFullScreenKey);
        QVERIFY(isPasted(before));
        QVERIFY(isOnlyInHistory(before));
        QVERIFY(toastComes());
        QVERIFY(QFileInfo(inTheWay).isFile());
    }

    void settingsSayWhereThePictureGoes_data()
    {
        QTest::addColumn<bool>("keepHistory");
        QTest::addColumn<bool>("autoSave");
        QTest::newRow("no history") << false << true;
        QTest::newRow("no file") << true << false;
    }
    void settingsSayWhereThePictureGoes()
    {
        QFETCH(bool, keepHistory);
        QFETCH(bool, autoSave);
        usePatternedDesktop();
        const QString folder = program().folders().home() + QStringLiteral("/new/folder");
        program().writeSettings({{QStringLiteral("saveFolder"), folder},
                                 {QStringLiteral("keepHistory"), keepHistory},
                                 {QStringLiteral("autoSaveFullScreen"), autoSave}});
        startProgram();
        const QImage before = screen().grabAtRest();
        pressHotKey(kFullScreenKey);
        // The toast is the last step.
        QVERIFY(toastComes());
        QVERIFY(samePixels(pasted(), before));
        QCOMPARE(history().size(), keepHistory ? 1 : 0);
        const QStringList files = QDir(folder).entryList(QDir::Files);
        QCOMPARE(files.size(), autoSave ? 1 : 0);
        QVERIFY(captures().isEmpty());
    }
};

} // namespace brindlecam::desktop

QTEST_GUILESS_MAIN(brindlecam::desktop::TestFullScreen)

#include "tst_fullscreen.moc"
