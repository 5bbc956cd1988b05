// Covers HouseStyle.
#include "look/Appearance.h"
#include "support/TestCase.h"

#include <QApplication>
#include <QDialogButtonBox>
#include <QMenu>
#include <QPainter>
#include <QPushButton>
#include <QStyle>
#include <QStyleOptionButton>

#include <algorithm>
#include <cmath>

namespace brindlecam {

namespace {

double luminance(const QColor& color)
{
    const auto linear = [](double value) {
        return value <= 0.04045 ? value / 12.92 : std::pow((value + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF()) +
           0.0722 * linear(color.blueF());
}

double contrast(const QColor& a, const QColor& b)
{
    const auto [darker, lighter] = std::minmax({luminance(a), luminance(b)});
    return (lighter + 0.05) / (darker + 0.05);
}

/// How the edge of a box that is not checked looks in this state.
QColor edgeOfABox(const QPalette& palette, QStyle::State state)
{
    QImage seen(24, 24, QImage::Format_RGB32);
    seen.fill(palette.color(QPalette::Window));
    QStyleOptionButton option;
    option.palette = palette;
    option.state = QStyle::State_Enabled | QStyle::State_Off | state;
    option.rect = QRect(4, 4, 15, 15);
    QPainter painter(&seen);
    QApplication::style()->drawPrimitive(QStyle::PE_IndicatorCheckBox, &option, &painter);
    return seen.pixelColor(4, 11);
}

} // namespace

class TestAppearance final : public test::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void textCanBeReadOnItsGround_data()
    {
        QTest::addColumn<Appearance::Shade>("shade");
        QTest::addColumn<QPalette::ColorRole>("words");
        QTest::addColumn<QPalette::ColorRole>("ground");
        for (const auto& [name, shade] : {std::pair("light", Appearance::Shade::light),
                                          std::pair("dark", Appearance::Shade::dark)}) {
            QTest::addRow("%s window", name) << shade << QPalette::WindowText << QPalette::Window;
            QTest::addRow("%s list", name) << shade << QPalette::Text << QPalette::Base;
            QTest::addRow("%s stripe", name) << shade << QPalette::Text << QPalette::AlternateBase;
            QTest::addRow("%s button", name) << shade << QPalette::ButtonText << QPalette::Button;
            QTest::addRow("%s tip", name)
                << shade << QPalette::ToolTipText << QPalette::ToolTipBase;
            QTest::addRow("%s chosen", name)
                << shade << QPalette::HighlightedText << QPalette::Highlight;
            QTest::addRow("%s secondary", name)
                << shade << QPalette::PlaceholderText << QPalette::Window;
            QTest::addRow("%s link", name) << shade << QPalette::Link << QPalette::Window;
        }
    }
    void textCanBeReadOnItsGround()
    {
        QFETCH(Appearance::Shade, shade);
        QFETCH(QPalette::ColorRole, words);
        QFETCH(QPalette::ColorRole, ground);
        const QPalette palette = Appearance::palette(shade);
        const double ratio = contrast(palette.color(words), palette.color(ground));
        QVERIFY2(ratio >= 4.5, qPrintable(QString::number(ratio)));
    }

    void warningsCanBeReadOnEitherWindow()
    {
        for (const auto shade : {Appearance::Shade::light, Appearance::Shade::dark}) {
            const QPalette palette = Appearance::palette(shade);
            QVERIFY(contrast(Appearance::warningText(palette), palette.color(QPalette::Window)) >=
                    4.5);
        }
    }

    void darkDesktopGetsDarkDialogs()
    {
        QPalette dark;
        dark.setColor(QPalette::Window, QColor(30, 30, 30));
        QApplication::setPalette(dark);
        Appearance::install({});
        QCOMPARE(QApplication::palette().color(QPalette::Window),
                 Appearance::palette(Appearance::Shade::dark).color(QPalette::Window));
    }

    void standardIconsAreMadeOnce()
    {
        Appearance::install({});
        for (const auto icon : {QStyle::SP_DirIcon, QStyle::SP_FileIcon, QStyle::SP_FileDialogBack})
            QCOMPARE(QApplication::style()->standardIcon(icon).cacheKey(),
                     QApplication::style()->standardIcon(icon).cacheKey());
        QVERIFY(QApplication::style()->standardIcon(QStyle::SP_DirIcon).cacheKey() !=
                QApplication::style()->standardIcon(QStyle::SP_FileIcon).cacheKey());
    }

    void dialogButtonsAreRoomyAndHaveNoIcons()
    {
        Appearance::install({});
        QDialogButtonBox box(QDialogButtonBox::Ok);
        const QPushButton* button = box.button(QDialogButtonBox::Ok);
        QVERIFY(button->icon().isNull());
        QVERIFY(button->sizeHint().width() >= 96);
        QVERIFY(button->sizeHint().height() >= 30);
    }

    void emptyBoxesCanBeSeen_data()
    {
        QTest::addColumn<Appearance::Shade>("shade");
        QTest::newRow("light") << Appearance::Shade::light;
        QTest::newRow("dark") << Appearance::Shade::dark;
    }
    void emptyBoxesCanBeSeen()
    {
        QFETCH(Appearance::Shade, shade);
        Appearance::install({});
        const QPalette palette = Appearance::palette(shade);
        const QColor edge = edgeOfABox(palette, {});
        const QColor focused =
            edgeOfABox(palette, QStyle::State_HasFocus | QStyle::State_KeyboardFocusChange);
        for (const QColor& seen : {edge, focused}) {
            QVERIFY(contrast(seen, palette.color(QPalette::Window)) >= 3);
            QVERIFY(contrast(seen, palette.color(QPalette::Base)) >= 3);
        }
        QVERIFY(focused.green() > focused.red() + 40);
        QVERIFY(edge.green() < edge.red() + 40);
    }

    void windowsHaveAnIcon()
    {
        Appearance::install({});
        QVERIFY(!QApplication::windowIcon().isNull());
    }
};

BRINDLECAM_TEST(TestAppearance);

} // namespace brindlecam

#include "tst_appearance.moc"
