// Covers Columns, Fragment, Rows, SidePanels.
#include "reading/ReadingOrder.h"
#include "support/TestCase.h"

namespace brindlecam {

namespace {

constexpr int kLetterWidth = 8;
constexpr int kRowHeight = 14;
constexpr int kRowPitch = 20;

/// A fragment whose width follows from its text. `row` counts lines of a page.
Fragment fragmentAt(int left, double row, const QString& text, int background = 0)
{
    const int width = static_cast<int>(text.size()) * kLetterWidth;
    return {text, QRect(left, static_cast<int>(row * kRowPitch), width, kRowHeight), background};
}

QStringList linesOf(const QString& together)
{
    return together.split(QLatin1Char('|'));
}

} // namespace

class TestReadingOrder final : public test::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void nothingGivesNoLines() { QVERIFY(readingOrder({}).isEmpty()); }

    void aFormIsReadRowByRow()
    {
        const QStringList lines = readingOrder({
            fragmentAt(300, 0, QStringLiteral("Español")),
            fragmentAt(0, 0, QStringLiteral("Idioma de la aplicación")),
            fragmentAt(0, 1, QStringLiteral("Formato de guardado")),
            fragmentAt(300, 1.2, QStringLiteral("PNG")),
            fragmentAt(0, 2, QStringLiteral("Calidad")),
            fragmentAt(300, 2, QStringLiteral("Máxima")),
        });
        QCOMPARE(lines,
                 linesOf(QStringLiteral(
                     "Idioma de la aplicación Español|Formato de guardado PNG|Calidad Máxima")));
    }

    void columnsAreReadOneAfterTheOther()
    {
        const QStringList lines = readingOrder({
            fragmentAt(0, 0, QStringLiteral("Título de la página")),
            fragmentAt(0, 2, QStringLiteral("El museo abre todos los")),
            fragmentAt(240, 2, QStringLiteral("Las visitas guiadas se")),
            fragmentAt(0, 3, QStringLiteral("días de diez a ocho. La")),
            fragmentAt(240, 3, QStringLiteral("hacen en grupos de doce")),
            fragmentAt(0, 4, QStringLiteral("entrada es gratuita los")),
            fragmentAt(240, 4, QStringLiteral("personas como máximo.")),
            fragmentAt(0, 5, QStringLiteral("domingos por la tarde.")),
        });
        QCOMPARE(lines, linesOf(QStringLiteral(
                            "Título de la página|El museo abre todos los|días de diez a "
                            "ocho. La|entrada es gratuita los|domingos por la tarde.|Las "
                            "visitas guiadas se|hacen en grupos de doce|personas como "
                            "máximo.")));
    }

    void threeColumnsAreReadOneAfterTheOther()
    {
        std::vector<Fragment> page;
        const QStringList names{QStringLiteral("uno"), QStringLiteral("dos"),
                                QStringLiteral("tres")};
        for (int row = 0; row < 3; ++row) {
            for (int column = 0; column < 3; ++column)
                page.push_back(fragmentAt(
                    column * 260, row,
                    QStringLiteral("columna %1, línea %2 de texto").arg(names[column]).arg(row)));
        }
        const QStringList lines = readingOrder(page);
        QCOMPARE(lines.size(), 9);
        QVERIFY(lines[2].startsWith(QStringLiteral("columna uno")));
        QVERIFY(lines[3].startsWith(QStringLiteral("columna dos")));
        QVERIFY(lines[8].startsWith(QStringLiteral("columna tres")));
    }

    void whatLooksLikeColumnsButIsNone_data()
    {
        QTest::addColumn<QStringList>("left");
        QTest::addColumn<QStringList>("right");
        const QStringList sentences = linesOf(QStringLiteral(
            "Guardar una copia del archivo|Abrir la carpeta reciente|Cerrar la ventana actual"));
        QTest::newRow("a menu with keys")
            << sentences << linesOf(QStringLiteral("Ctrl+Mayús+S|Ctrl+O|Ctrl+W"));
        QTest::newRow("two rows only")
            << sentences.mid(0, 2)
            << linesOf(QStringLiteral("copia de seguridad|carpeta de imágenes"));
        QTest::newRow("a ragged side")
            << linesOf(
                   QStringLiteral("Una descripción muy larga de verdad que llena|No|Sí, de acuerdo "
                                  "ya"))
            << sentences;
    }
    void whatLooksLikeColumnsButIsNone()
    {
        QFETCH(QStringList, left);
        QFETCH(QStringList, right);
        std::vector<Fragment> page;
        QStringList expected;
        for (int row = 0; row < left.size(); ++row) {
            page.push_back(fragmentAt(0, row, left[row]));
            page.push_back(fragmentAt(400, row, right[row]));
            expected << left[row] + QLatin1Char(' ') + right[row];
        }
        QCOMPARE(readingOrder(page), expected);
    }

    void panelsSideBySideAreReadOneByOne()
    {
        const QStringList lines = readingOrder({
            fragmentAt(0, 0, QStringLiteral("Ventana")),
            fragmentAt(0, 2, QStringLiteral("Inicio"), 1),
            fragmentAt(200, 2.3, QStringLiteral("Tareas de la semana"), 2),
            fragmentAt(0, 3, QStringLiteral("Mensajes"), 3), // a marked entry of the side bar
            fragmentAt(200, 3.3, QStringLiteral("Llamar a Ana"), 2),
            fragmentAt(0, 4, QStringLiteral("Ajustes"), 1),
            fragmentAt(0, 7, QStringLiteral("Listo")),
        });
        QCOMPARE(lines, linesOf(QStringLiteral("Ventana|Inicio|Mensajes|Ajustes|Tareas de la "
                                               "semana|Llamar a Ana|Listo")));
    }

    void bandsBelowEachOtherAreNoPanels()
    {
        const QStringList lines = readingOrder({
            fragmentAt(0, 0, QStringLiteral("Arriba"), 1),
            fragmentAt(200, 0, QStringLiteral("Cerrar"), 1),
            fragmentAt(0, 1, QStringLiteral("Segunda"), 1),
            fragmentAt(0, 2, QStringLiteral("Abajo"), 2),
            fragmentAt(200, 2, QStringLiteral("Seguir"), 2),
            fragmentAt(0, 3, QStringLiteral("Fin"), 2),
        });
        QCOMPARE(lines, linesOf(QStringLiteral("Arriba Cerrar|Segunda|Abajo Seguir|Fin")));
    }

    void buttonsInARowAreOneLine()
    {
        const QStringList lines = readingOrder({
            fragmentAt(0, 0, QStringLiteral("Aceptar"), 1),
            fragmentAt(100, 0, QStringLiteral("Cancelar"), 2),
            fragmentAt(200, 0, QStringLiteral("Ayuda"), 3),
        });
        QCOMPARE(lines, QStringList(QStringLiteral("Aceptar Cancelar Ayuda")));
    }
};

BRINDLECAM_TEST(TestReadingOrder);

} // namespace brindlecam

#include "tst_readingorder.moc"
