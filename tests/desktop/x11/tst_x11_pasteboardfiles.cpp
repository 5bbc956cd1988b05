#include "desktop/support/x11/SelectionReader.h"
#include "support/Files.h"
#include "x11/PasteboardTest.h"
#include "x11/ThisDesktop.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QMimeData>
#include <QProcess>
#include <QTemporaryDir>
#include <QUrl>

namespace brindlecam {

using desktop::SelectionReader;
using test::display;

namespace {

/// More than one chunk of the selection protocol.
QByteArray largeGif()
{
    constexpr qsizetype kSize = 3 * 1024 * 1024;
    return "GIF89a" + QByteArray(kSize, 'g') + ";";
}

QByteArray readByXclip(const QString& target)
{
    QProcess xclip;
    xclip.start(QStringLiteral("xclip"),
                {QStringLiteral("-selection"), QStringLiteral("clipboard"), QStringLiteral("-out"),
                 QStringLiteral("-target"), target});
    xclip.waitForFinished();
    return xclip.readAllStandardOutput();
}

const QList<QByteArray> kAlwaysOffered{"TARGETS", "TIMESTAMP", "MULTIPLE", "SAVE_TARGETS"};

} // namespace

/// Files and animations on the clipboard, as other programs paste them.
class TestX11PasteboardFiles final : public test::PasteboardTest {
    Q_OBJECT

private Q_SLOTS:
    void aGifIsOfferedAsItsFileAndThenAsItsBytes()
    {
        QVERIFY(taken(ClipboardContent::gif("GIF89a", QStringLiteral("/a b.gif"))));
        SelectionReader reader(display());
        QCOMPARE(reader.targets(),
                 kAlwaysOffered + QList<QByteArray>({"text/uri-list",
                                                     "x-special/gnome-copied-files", "image/gif"}));
        QCOMPARE(reader.read("text/uri-list"), QByteArray("file:///a%20b.gif\r\n"));
        QCOMPARE(reader.read("x-special/gnome-copied-files"),
                 QByteArray("copy\nfile:///a%20b.gif"));
        QCOMPARE(reader.read("image/gif"), QByteArray("GIF89a"));
        QVERIFY(!reader.read("image/png"));
        QVERIFY(!reader.read("UTF8_STRING"));
    }

    void filesAreOfferedAsFilesOnly()
    {
        QVERIFY(
            taken(ClipboardContent::files({QStringLiteral("/a.png"), QStringLiteral("/b.gif")})));
        SelectionReader reader(display());
        QCOMPARE(reader.targets(),
                 kAlwaysOffered +
                     QList<QByteArray>({"text/uri-list", "x-special/gnome-copied-files"}));
        QCOMPARE(reader.read("text/uri-list"), QByteArray("file:///a.png\r\nfile:///b.gif\r\n"));
        QCOMPARE(reader.read("x-special/gnome-copied-files"),
                 QByteArray("copy\nfile:///a.png\nfile:///b.gif"));
    }

    void aLargeGifIsReadWholeInEveryForm()
    {
        const QByteArray gif = largeGif();
        const QTemporaryDir place;
        const QString path = place.filePath(QStringLiteral("año 100%.gif"));
        test::put(path, gif);
        QVERIFY(taken(ClipboardContent::gif(gif, path)));
        SelectionReader reader(display());
        QVERIFY(reader.read("image/gif") == gif);
        QVERIFY(readByXclip(QStringLiteral("image/gif")) == gif);
        const QUrl pasted = QUrl::fromEncoded(
            readByXclip(QStringLiteral("text/uri-list")).trimmed(), QUrl::StrictMode);
        QVERIFY(test::contentOf(pasted.toLocalFile()) == gif);
    }

    // Its clipboard has a connection of its own, and reads what is not its own over it.
    void qtFindsTheFilesAndTheAnimation()
    {
        const QStringList paths{QStringLiteral("/Imágenes/a b.gif"), QStringLiteral("/c#?%41.png")};
        QVERIFY(taken(ClipboardContent::files(paths)));
        // Qt hears of a change by an event of its own.
        QTRY_COMPARE(pastedByQt()->urls(),
                     (QList{QUrl::fromLocalFile(paths.at(0)), QUrl::fromLocalFile(paths.at(1))}));
        QVERIFY(taken(ClipboardContent::gif("GIF89a", paths.at(0))));
        QTRY_COMPARE(pastedByQt()->urls(), QList{QUrl::fromLocalFile(paths.at(0))});
        QTRY_COMPARE(pastedByQt()->data(QStringLiteral("image/gif")), QByteArray("GIF89a"));
    }

    void severalFormsAreAskedForAtOnce()
    {
        QVERIFY(taken(ClipboardContent::gif("GIF89a", QStringLiteral("/a.gif"))));
        SelectionReader reader(display());
        const QList<std::optional<QByteArray>> expected{QByteArray("GIF89a"), std::nullopt,
                                                        QByteArray("file:///a.gif\r\n")};
        QCOMPARE(reader.readMultiple({"image/gif", "image/png", "text/uri-list"}), expected);
    }

    void eachKindReplacesTheOneBefore()
    {
        SelectionReader reader(display());
        QVERIFY(setPicture("png", nothing));
        QVERIFY(taken(ClipboardContent::gif("GIF89a", QStringLiteral("/a.gif"))));
        QVERIFY(!reader.read("image/png"));
        QVERIFY(taken(ClipboardContent::files({QStringLiteral("/b.png")})));
        QVERIFY(!reader.read("image/gif"));
        QCOMPARE(reader.read("text/uri-list"), QByteArray("file:///b.png\r\n"));
        QVERIFY(setText(QStringLiteral("text")));
        QVERIFY(!reader.read("text/uri-list"));
        QVERIFY(!reader.read("x-special/gnome-copied-files"));
        QCOMPARE(reader.read("UTF8_STRING"), QByteArray("text"));
    }

    void theNewerOfTwoOvertakesTheOlderWhateverTheyAre()
    {
        QVERIFY(overtakes(ClipboardContent::files({QStringLiteral("/b.png")}),
                          ClipboardContent::gif("GIF89a", QStringLiteral("/a.gif"))));
        SelectionReader reader(display());
        QCOMPARE(reader.read("text/uri-list"), QByteArray("file:///b.png\r\n"));
    }

private:
    [[nodiscard]] bool taken(ClipboardContent content)
    {
        return fateOf(std::move(content)) == ClipboardFate::taken;
    }
    [[nodiscard]] static const QMimeData* pastedByQt()
    {
        return QGuiApplication::clipboard()->mimeData();
    }
};

BRINDLECAM_TEST(TestX11PasteboardFiles);

} // namespace brindlecam

#include "tst_x11_pasteboardfiles.moc"
