#include "platform/ClipboardContent.h"
#include "support/TestCase.h"

#include <QMimeData>
#include <QUrl>

namespace brindlecam {

namespace {

/// Formats in their order, as "type: bytes".
QByteArrayList offered(const ClipboardContent& content)
{
    QByteArrayList offered;
    for (const auto& format : content.formats)
        offered.push_back(format.mimeType + ": " + format.bytes);
    return offered;
}

} // namespace

/// What the clipboard offers of each kind of thing.
class TestClipboardContent final : public test::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void aPictureIsPngAndATiffThatIsMadeLater()
    {
        const auto content =
            ClipboardContent::picture("png", [] { return QByteArrayLiteral("made"); });
        QCOMPARE(offered(content), (QByteArrayList{"image/png: png", "image/tiff: "}));
        QVERIFY(!content.formats.front().make);
        QCOMPARE(content.formats.back().make(), QByteArrayLiteral("made"));
    }

    void whatAPictureLacksIsNotOffered()
    {
        QCOMPARE(offered(ClipboardContent::picture("png", nullptr)),
                 QByteArrayList{"image/png: png"});
        QCOMPARE(offered(ClipboardContent::picture({}, [] { return QByteArray(); })),
                 QByteArrayList{"image/tiff: "});
    }

    void aTextIsUtf8()
    {
        QCOMPARE(offered(ClipboardContent::text(QStringLiteral("mañana"))),
                 QByteArrayList{"text/plain;charset=utf-8: ma\u00f1ana"});
    }

    void filesAreUrisInBothForms()
    {
        const auto content =
            ClipboardContent::files({QStringLiteral("/one.gif"), QStringLiteral("/a/two.png")});
        QCOMPARE(offered(content),
                 (QByteArrayList{
                     "text/uri-list: file:///one.gif\r\nfile:///a/two.png\r\n",
                     "x-special/gnome-copied-files: copy\nfile:///one.gif\nfile:///a/two.png"}));
    }

    void noFilesAreNothing() { QVERIFY(ClipboardContent::files({}).formats.empty()); }

    void everyNameSurvives_data()
    {
        QTest::addColumn<QString>("path");
        QTest::addColumn<QByteArray>("uri");
        const auto row = [](const char* name, const char* path, const char* uri) {
            QTest::newRow(name) << QString::fromUtf8(path) << QByteArray(uri);
        };
        row("space", "/Mis capturas/a b.gif", "file:///Mis%20capturas/a%20b.gif");
        row("not ASCII", "/Imágenes/año.png", "file:///Im%C3%A1genes/a%C3%B1o.png");
        row("percent", "/100%.png", "file:///100%25.png");
        row("escaped already", "/a%20b.png", "file:///a%2520b.png");
        row("marks of a URI", "/what?#1.png", "file:///what%3F%231.png");
        row("line break", "/two\nlines\r.png", "file:///two%0Alines%0D.png");
        row("colon", "/12:30:00.png", "file:///12:30:00.png");
    }
    void everyNameSurvives()
    {
        QFETCH(const QString, path);
        QFETCH(const QByteArray, uri);
        const auto content = ClipboardContent::files({path});
        QCOMPARE(content.formats.front().bytes, uri + "\r\n");
        QCOMPARE(content.formats.back().bytes, "copy\n" + uri);
        QMimeData pasted;
        pasted.setData(QStringLiteral("text/uri-list"), content.formats.front().bytes);
        QCOMPARE(pasted.urls(), QList<QUrl>{QUrl::fromLocalFile(path)});
        QCOMPARE(pasted.urls().constFirst().toLocalFile(), path);
    }

    void anAnimationIsItsFileAndThenItsBytes()
    {
        QCOMPARE(offered(ClipboardContent::gif("GIF89a", QStringLiteral("/a.gif"))),
                 (QByteArrayList{"text/uri-list: file:///a.gif\r\n",
                                 "x-special/gnome-copied-files: copy\nfile:///a.gif",
                                 "image/gif: GIF89a"}));
    }

    void anAnimationWithoutAFileIsItsBytes()
    {
        QCOMPARE(offered(ClipboardContent::gif("GIF89a", {})), QByteArrayList{"image/gif: GIF89a"});
    }

    void anAnimationWithoutBytesIsItsFile()
    {
        QCOMPARE(offered(ClipboardContent::gif({}, QStringLiteral("/a.gif"))),
                 offered(ClipboardContent::files({QStringLiteral("/a.gif")})));
    }

    void nothingIsConcealedUnasked()
    {
        QVERIFY(!ClipboardContent::picture("png", nullptr).concealed);
        QVERIFY(!ClipboardContent::text(QStringLiteral("text")).concealed);
        QVERIFY(!ClipboardContent::gif("GIF89a", QStringLiteral("/a.gif")).concealed);
    }
};

BRINDLECAM_TEST(TestClipboardContent);

} // namespace brindlecam

#include "tst_clipboardcontent.moc"
