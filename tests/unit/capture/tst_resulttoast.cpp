#include "capture/ResultToast.h"
#include "support/TestCase.h"

namespace brindlecam {

class TestResultToast final : public test::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void tellsWhatBecameOfThePicture_data()
    {
        using Kind = ResultToast::Kind;
        QTest::addColumn<int>("kind");
        QTest::addColumn<ClipboardFate>("clipboard");
        QTest::addColumn<Fate::Copy>("file");
        QTest::addColumn<QString>("expected"); // null: nothing
        const auto area = int(Kind::area);
        const auto fullScreen = int(Kind::fullScreen);
        constexpr auto kTaken = ClipboardFate::taken;
        constexpr auto kRefused = ClipboardFate::refused;
        constexpr auto kOvertaken = ClipboardFate::overtaken;
        constexpr auto kDone = Fate::Copy::done;
        constexpr auto kFailed = Fate::Copy::failed;
        constexpr auto kNotWanted = Fate::Copy::notWanted;
        QTest::newRow("area saved")
            << area << kTaken << kDone << QStringLiteral("Copiado y guardado");
        QTest::newRow("area not saved")
            << area << kTaken << kFailed
            << QStringLiteral("Copiado, pero no se pudo guardar en la carpeta");
        QTest::newRow("area without a file")
            << area << kTaken << kNotWanted << QStringLiteral("Copiado al portapapeles");
        QTest::newRow("full screen saved")
            << fullScreen << kTaken << kDone
            << QStringLiteral("Pantalla completa copiada y guardada");
        QTest::newRow("full screen not saved")
            << fullScreen << kTaken << kFailed
            << QStringLiteral("Copiada, pero no se pudo guardar en la carpeta");
        QTest::newRow("full screen without a file")
            << fullScreen << kTaken << kNotWanted << QStringLiteral("Pantalla completa copiada");
        for (const int kind : {area, fullScreen}) {
            const char* name = kind == area ? "area" : "full screen";
            QTest::addRow("%s saved and not copied", name)
                << kind << kRefused << kDone << QStringLiteral("Guardada, pero no se pudo copiar");
            QTest::addRow("%s neither saved nor copied", name)
                << kind << kRefused << kFailed
                << QStringLiteral("No se pudo copiar ni guardar la captura");
            QTest::addRow("%s not copied", name)
                << kind << kRefused << kNotWanted << QStringLiteral("No se pudo copiar la captura");
            QTest::addRow("%s overtaken and saved", name)
                << kind << kOvertaken << kDone << QString();
            QTest::addRow("%s overtaken and not saved", name)
                << kind << kOvertaken << kFailed << QStringLiteral("No se pudo guardar la captura");
            QTest::addRow("%s overtaken", name) << kind << kOvertaken << kNotWanted << QString();
        }
    }
    void tellsWhatBecameOfThePicture()
    {
        QFETCH(int, kind);
        QFETCH(ClipboardFate, clipboard);
        QFETCH(Fate::Copy, file);
        const auto told = ResultToast::message(static_cast<ResultToast::Kind>(kind),
                                               {.clipboard = clipboard, .file = file});
        QTEST(told.value_or(QString()), "expected");
    }

    void aFileOfTheUsersChoiceIsOnlyToldWhenItFailed()
    {
        QVERIFY(!ResultToast::saveMessage({.file = Fate::Copy::done}));
        QCOMPARE(ResultToast::saveMessage({.file = Fate::Copy::failed}),
                 std::optional(QStringLiteral("No se pudo guardar la captura")));
    }

    void countsTheLinesOfRecognisedText_data()
    {
        QTest::addColumn<QString>("recognised");
        QTest::addColumn<QString>("expected");
        QTest::newRow("none") << QString() << QStringLiteral("Texto copiado (0 líneas)");
        QTest::newRow("one") << QStringLiteral("hola") << QStringLiteral("Texto copiado (1 línea)");
        QTest::newRow("empty lines do not count")
            << QStringLiteral("a\n\nb\nc\n") << QStringLiteral("Texto copiado (3 líneas)");
    }
    void countsTheLinesOfRecognisedText()
    {
        QFETCH(QString, recognised);
        QTEST(ResultToast::textMessage(recognised, ClipboardFate::taken).value_or(QString()),
              "expected");
    }

    void aTextThatWasNotCopiedIsNotToldAsCopied()
    {
        QCOMPARE(ResultToast::textMessage(QStringLiteral("hola"), ClipboardFate::refused),
                 std::optional(QStringLiteral("No se pudo copiar el texto")));
        QVERIFY(!ResultToast::textMessage(QStringLiteral("hola"), ClipboardFate::overtaken));
    }
};

BRINDLECAM_TEST(TestResultToast);

} // namespace brindlecam

#include "tst_resulttoast.moc"
