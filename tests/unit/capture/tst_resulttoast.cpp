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
        QTest::addColumn<bool>("requested");
        QTest::addColumn<bool>("saved");
        QTest::addColumn<QString>("expected");
        QTest::newRow("area saved")
            << int(Kind::area) << true << true << QStringLiteral("Copiado y guardado");
        QTest::newRow("area not saved")
            << int(Kind::area) << true << false
            << QStringLiteral("Copiado, pero no se pudo guardar en la carpeta");
        QTest::newRow("area without a file")
            << int(Kind::area) << false << false << QStringLiteral("Copiado al portapapeles");
        QTest::newRow("full screen saved")
            << int(Kind::fullScreen) << true << true
            << QStringLiteral("Pantalla completa copiada y guardada");
        QTest::newRow("full screen not saved")
            << int(Kind::fullScreen) << true << false
            << QStringLiteral("Copiada, pero no se pudo guardar en la carpeta");
        QTest::newRow("full screen without a file") << int(Kind::fullScreen) << false << false
                                                    << QStringLiteral("Pantalla completa copiada");
    }
    void tellsWhatBecameOfThePicture()
    {
        QFETCH(int, kind);
        QFETCH(bool, requested);
        QFETCH(bool, saved);
        QTEST(ResultToast::message(static_cast<ResultToast::Kind>(kind),
                                   {.requested = requested, .saved = saved}),
              "expected");
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
        QTEST(ResultToast::textMessage(recognised), "expected");
    }
};

BRINDLECAM_TEST(TestResultToast);

} // namespace brindlecam

#include "tst_resulttoast.moc"
