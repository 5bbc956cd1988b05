#include "base/Text.h"
#include "base/Tool.h"
#include "look/Catalogues.h"
#include "support/TestCase.h"

#include <QDialogButtonBox>
#include <QPushButton>

namespace brindlecam {

namespace {

const QString kLinuxCatalogue = QStringLiteral(":/i18n/brindlecam_linux.qm");

} // namespace

class TestCatalogues final : public test::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void textsThatNameApplesThingsReadDifferentlyOnLinux()
    {
        QCOMPARE(tooltip(Tool::line), QStringLiteral("Línea (⇧ para ángulos rectos)"));
        {
            Catalogues catalogues;
            catalogues.install(kLinuxCatalogue);
            QCOMPARE(tooltip(Tool::line), QStringLiteral("Línea (Mayús para ángulos rectos)"));
            QCOMPARE(tooltip(Tool::arrow), QStringLiteral("Flecha (Mayús para ángulos rectos)"));
            QCOMPARE(text("Brindlecam vive en la barra de menú 🍃"),
                     QStringLiteral("Brindlecam vive en la bandeja del sistema 🍃"));
        }
        QCOMPARE(tooltip(Tool::line), QStringLiteral("Línea (⇧ para ángulos rectos)"));
    }

    void keysOfTheBarsAreThoseOfTheKeyboard_data()
    {
        QTest::addColumn<QString>("spanish");
        QTest::addColumn<QString>("onLinux");
        const auto row = [](const char* name, const char* spanish, const char* onLinux) {
            QTest::newRow(name) << QString::fromUtf8(spanish) << QString::fromUtf8(onLinux);
        };
        row("pointer", "Mover la selección o una anotación (⌫ la borra)",
            "Mover la selección o una anotación (Supr la borra)");
        row("undo", "Deshacer (⌘Z)", "Deshacer (Ctrl+Z)");
        row("redo", "Rehacer (⇧⌘Z)", "Rehacer (Ctrl+Mayús+Z)");
        row("copy", "Copiar (⌘C o Enter)", "Copiar (Ctrl+C o Enter)");
        row("save", "Guardar (⌘S)", "Guardar (Ctrl+S)");
    }

    void keysOfTheBarsAreThoseOfTheKeyboard()
    {
        QFETCH(QString, spanish);
        QFETCH(QString, onLinux);
        Catalogues catalogues;
        catalogues.install(kLinuxCatalogue);
        QCOMPARE(text(spanish.toUtf8().constData()), onLinux);
    }

    void allOthersStandAsTheyAre()
    {
        Catalogues catalogues;
        catalogues.install(kLinuxCatalogue);
        QCOMPARE(tooltip(Tool::pen), QStringLiteral("Lápiz"));
        QCOMPARE(text("Descargar Brindlecam %1…"), QStringLiteral("Descargar Brindlecam %1…"));
    }

    void qtsOwnButtonsAreSpanish()
    {
        Catalogues catalogues;
        catalogues.install(QString());
        QDialogButtonBox box(QDialogButtonBox::Cancel);
        QCOMPARE(box.button(QDialogButtonBox::Cancel)->text().remove(QLatin1Char('&')),
                 QStringLiteral("Cancelar"));
    }

    void aMissingCatalogueLeavesTheSpanishTexts()
    {
        Catalogues catalogues;
        catalogues.install(QStringLiteral(":/i18n/brindlecam_nowhere.qm"));
        QCOMPARE(tooltip(Tool::line), QStringLiteral("Línea (⇧ para ángulos rectos)"));
    }
};

BRINDLECAM_TEST(TestCatalogues);

} // namespace brindlecam

#include "tst_catalogues.moc"
