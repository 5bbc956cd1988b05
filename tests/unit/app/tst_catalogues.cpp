#include "app/AppDelegate.h"
#include "app/Catalogues.h"
#include "base/Text.h"
#include "base/Tool.h"
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

    void allOthersStandAsTheyAre()
    {
        Catalogues catalogues;
        catalogues.install(kLinuxCatalogue);
        QCOMPARE(tooltip(Tool::pen), QStringLiteral("Lápiz"));
        QCOMPARE(AppDelegate::updateTitle(QStringLiteral("2")),
                 QStringLiteral("Descargar Brindlecam 2…"));
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
