// Covers ConfirmedClearing.
#include "HistoryFixture.h"
#include "history/ConfirmedClearing.h"
#include "notices/Alerts.h"
#include "pictures/PngWriter.h"
#include "support/FakePanels.h"
#include "support/GatedExecutor.h"
#include "support/TestCase.h"

#include <QImage>
#include <QLabel>
#include <QMessageBox>
#include <QPushButton>

#include <optional>

namespace brindlecam {

namespace {

const QString kGifExtension = QStringLiteral("gif");

QByteArrayList mimeTypes(const ClipboardContent& content)
{
    QByteArrayList types;
    for (const auto& format : content.formats)
        types << format.mimeType;
    return types;
}

} // namespace

/// Entries that leave the history: copied to the clipboard again, removed, or all at once.
class TestHistoryCopies final : public test::TestCase, private test::HistoryFixture {
    Q_OBJECT

private:
    struct Question {
        test::FakePanels panels;
        Alerts alerts{panels};
        std::optional<bool> cleared;
        ConfirmedClearing clearing;

        explicit Question(const History& history)
            : clearing(history, alerts, [](const std::function<void()>& job) { job(); })
        {
            clearing.confirmAndClear([this](bool done) { cleared = done; });
            test::sendAllPostedEvents();
        }
        [[nodiscard]] QMessageBox* box() const
        {
            return panels.shown.empty()
                       ? nullptr
                       : qobject_cast<QMessageBox*>(panels.shown.back().widget.data());
        }
        void press(const char* title) const
        {
            for (QPushButton* button : box()->findChildren<QPushButton*>()) {
                if (button->text() == QString::fromUtf8(title))
                    button->click();
            }
            test::sendAllPostedEvents();
        }
    };

private Q_SLOTS:
    void cleanup() { startFresh(); }

    void aPictureIsCopiedAsItsOwnBytesAndAsTiff()
    {
        QImage image(8, 6, QImage::Format_RGB32);
        image.fill(qRgb(1, 200, 3));
        const QByteArray png = PngWriter::encode(image, {.dotsPerMetre = 5669, .cancelled = {}});
        history().add(png, kPng);
        const auto content = History::clipboardContent(history().items().constFirst());
        QVERIFY(content);
        QCOMPARE(mimeTypes(*content), (QByteArrayList{"image/png", "image/tiff"}));
        QCOMPARE(content->formats.front().bytes, png);
        const QImage tiff = QImage::fromData(content->formats.back().make(), "TIFF");
        QCOMPARE(tiff.convertToFormat(QImage::Format_RGB32), image);
        QCOMPARE(tiff.dotsPerMeterX(), 5669);
    }

    void whatDoesNotDecodeIsCopiedAsItsBytesAlone_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::newRow("text") << QByteArray("no es una imagen");
        QTest::newRow("the beginning of one")
            << QByteArray::fromHex("89504e470d0a1a0a0000000d4948");
        // It claims to be of 20000 by 20000 pixels.
        QTest::newRow("more than memory has room for")
            << QByteArray::fromHex("89504e470d0a1a0a0000000d4948445200004e2000004e2008020000006c12"
                                   "d16e0000000c49444154789c6360a00c000000400001b7347cef0000000049"
                                   "454e44ae426082");
    }
    void whatDoesNotDecodeIsCopiedAsItsBytesAlone()
    {
        QFETCH(QByteArray, bytes);
        history().add(bytes, kPng);
        const auto content = History::clipboardContent(history().items().constFirst());
        QVERIFY(content);
        QCOMPARE(mimeTypes(*content), QByteArrayList{"image/png"});
        QCOMPARE(content->formats.front().bytes, bytes);
    }

    void anAnimationIsCopiedAsItsFileAndItsBytes()
    {
        history().add("GIF89a", kGifExtension);
        const QString item = history().items().constFirst();
        const auto content = History::clipboardContent(item);
        QVERIFY(content);
        QCOMPARE(mimeTypes(*content),
                 (QByteArrayList{"text/uri-list", "x-special/gnome-copied-files", "image/gif"}));
        QVERIFY(content->formats.front().bytes.contains(item.toUtf8()));
        QCOMPARE(content->formats.back().bytes, QByteArray("GIF89a"));
    }

    void whatCannotBeReadIsNotCopied()
    {
        history().add("x", kPng);
        const QString item = history().items().constFirst();
        test::put(item, {});
        QVERIFY(!History::clipboardContent(item));
        QVERIFY(QFile::remove(item));
        QVERIFY(!History::clipboardContent(item));
        QVERIFY(!History::clipboardContent(folder()));
    }

    void oneIsRemovedAndNothingThatIsNoEntry()
    {
        addMany(3);
        const QStringList before = history().items();
        test::put(folder() + QStringLiteral("/foto.png"));
        history().remove(folder() + QStringLiteral("/foto.png"));
        history().remove(folder() + QStringLiteral("/none.png"));
        history().remove(before.at(1));
        QCOMPARE(history().items(), (QStringList{before.at(0), before.at(2)}));
        QCOMPARE(test::contentOf(folder() + QStringLiteral("/foto.png")), QByteArray("by hand"));
    }

    void nothingIsAskedAboutAnEmptyHistory()
    {
        const History empty = history();
        const Question question(empty);
        QVERIFY(!question.box());
        QCOMPARE(question.cleared, false);
    }

    void everythingGoesWhenTheUserSaysSo()
    {
        addMany(3);
        const History full = history();
        const Question question(full);
        QVERIFY(question.box());
        QCOMPARE(question.box()->text(), QStringLiteral("¿Vaciar las 3 capturas recientes?"));
        QCOMPARE(question.box()->informativeText(),
                 QStringLiteral("Se borran definitivamente las copias internas del cajón. No "
                                "afecta a los archivos de tu carpeta de capturas ni a lo que ya "
                                "pegaste."));
        QVERIFY(!question.cleared);
        QCOMPARE(full.items().size(), 3);
        question.press("Vaciar");
        QCOMPARE(question.cleared, true);
        QVERIFY(full.items().isEmpty());
    }

    void everythingStaysOtherwise()
    {
        addMany(3);
        const History full = history();
        const Question cancelled(full);
        cancelled.press("Cancelar");
        QCOMPARE(cancelled.cleared, false);
        const Question closed(full);
        closed.box()->reject();
        QCOMPARE(closed.cleared, false);
        QCOMPARE(full.items().size(), 3);
    }
};

BRINDLECAM_TEST(TestHistoryCopies);

} // namespace brindlecam

#include "tst_historycopies.moc"
