// Covers SessionFrame, SessionPanel, SessionPanelAccess, StatusLine.
#include "long/ChromePlacement.h"
#include "long/SessionFrame.h"
#include "long/SessionPanel.h"
#include "long/StatusLine.h"
#include "look/InterfaceFont.h"
#include "look/PanelButton.h"
#include "support/FakeCompositing.h"
#include "support/FakePanels.h"
#include "support/TestCase.h"

#include <QAccessible>
#include <QApplication>
#include <QFontMetricsF>
#include <QPainter>
#include <QScopeGuard>

#include <algorithm>
#include <memory>

namespace brindlecam {

namespace {

constexpr QRect kStands(100, 200, 640, 44);
const QString kScrolling =
    QStringLiteral("Desplázate hacia abajo con calma  ·  Enter = listo  ·  Esc = cancelar");

struct SessionPanelDesk {
    test::FakePanels panels;
    test::FakeCompositing compositing;
    std::unique_ptr<SessionPanel> panel;

    explicit SessionPanelDesk(const QRect& native = kStands,
                              const QString& doneTitle = QStringLiteral("Listo"))
        : panel(std::make_unique<SessionPanel>(panels, compositing, native, 1,
                                               SessionPanel::Words{kScrolling, doneTitle}))
    {
    }

    [[nodiscard]] StatusLine& line() const { return *panel->findChild<StatusLine*>(); }
    [[nodiscard]] PanelButton& button(const QString& title) const
    {
        const auto all = panel->findChildren<PanelButton*>();
        return **std::ranges::find_if(all, [&](auto* each) { return each->text() == title; });
    }
    [[nodiscard]] QImage look() const
    {
        QImage image(panel->size(), QImage::Format_ARGB32_Premultiplied);
        image.fill(Qt::transparent);
        panel->render(&image, {}, {}, QWidget::DrawChildren);
        return image;
    }
};

} // namespace

class TestSessionPanel final : public test::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void standsWhereItIsPutInItsRole()
    {
        const SessionPanelDesk desk;
        desk.panel->appear();
        QCOMPARE(desk.panels.roles, std::vector{PanelRole::sessionPanel});
        QCOMPARE(desk.panels.shown.at(0).native, kStands);
        QVERIFY(desk.panels.focused.empty());
    }

    void statusAndButtonsStandSideBySide()
    {
        const SessionPanelDesk desk;
        desk.panel->appear();
        QCOMPARE(desk.line().geometry(), QRect(14, 8, 430, 28));
        QCOMPARE(desk.button(QStringLiteral("Listo")).geometry(), QRect(454, 8, 83, 28));
        QCOMPARE(desk.button(QStringLiteral("Cancelar")).geometry(), QRect(547, 8, 83, 28));
    }

    void statusGivesWayWhereThereIsLessRoom()
    {
        const SessionPanelDesk narrow(QRect(8, 0, 464, 44));
        narrow.panel->appear();
        QCOMPARE(narrow.line().geometry(), QRect(14, 8, 254, 28));
        QCOMPARE(narrow.button(QStringLiteral("Cancelar")).geometry(), QRect(371, 8, 83, 28));
        const SessionPanelDesk wordy(kStands, QStringLiteral("Terminar todo y seguir"));
        wordy.panel->appear();
        const int wide = wordy.button(QStringLiteral("Terminar todo y seguir")).width();
        QVERIFY(wide > 83);
        QCOMPARE(wordy.line().width(), 430 - (wide - 83));
    }

    // As wide as in the interface's own font, or wider.
    void longStatusIsCutOffBeforeTheButtons()
    {
        const SessionPanelDesk desk;
        desk.panel->appear();
        desk.panel->setStatus(QString(300, QLatin1Char('n')));
        QCOMPARE(desk.panel->status().size(), 300);
        const QImage image = desk.look();
        const QColor ground = image.pixelColor(320, 3);
        for (int x = 445; x < 454; ++x) {
            for (int y = 2; y < 42; ++y)
                QCOMPARE(image.pixelColor(x, y), ground);
        }
    }

    void restOfTheStatusStandsStillWhileItCounts()
    {
        // A font in which a 1 is narrower than a 0.
        const QFont usual = QGuiApplication::font();
        const auto back = qScopeGuard([&usual] { QApplication::setFont(usual); });
        InterfaceFont::install(QStringLiteral("Inter"));
        const QFontMetricsF metrics(InterfaceFont::medium(13));
        if (metrics.horizontalAdvance(QLatin1Char('1')) ==
            metrics.horizontalAdvance(QLatin1Char('0')))
            QSKIP("no such font is here");
        const SessionPanelDesk desk;
        desk.panel->appear();
        const auto lookAt = [&](const char* time) {
            desk.panel->setStatus(
                QStringLiteral("● Grabando %1  ·  Enter = terminar").arg(QLatin1String(time)));
            return desk.look();
        };
        const QImage first = lookAt("0:00");
        const QImage later = lookAt("1:11");
        QVERIFY(first != later);
        const auto differs = [&](int x) {
            for (int y = 0; y < first.height(); ++y) {
                if (first.pixel(x, y) != later.pixel(x, y))
                    return true;
            }
            return false;
        };
        int last = first.width() - 1;
        while (last > 0 && !differs(last))
            --last;
        QVERIFY2(last < 14 + 140, qPrintable(QString::number(last))); // the digits
    }

    void groundIsDarkAndRounded()
    {
        const SessionPanelDesk desk;
        desk.panel->appear();
        const QImage image = desk.look();
        QCOMPARE(image.pixelColor(0, 0).alpha(), 0);
        QCOMPARE(image.pixelColor(639, 43).alpha(), 0);
        const QColor ground = image.pixelColor(320, 3);
        QVERIFY(qAbs(ground.alphaF() - 0.94) < 0.01);
        QVERIFY(qAbs(ground.redF() - 0.1) < 0.01);
        QVERIFY(image.pixelColor(5, 22) == ground);
        QVERIFY(desk.panels.cuts.at(desk.panel.get()).isEmpty());
    }

    void isCutAndOpaqueWhereNothingBlends()
    {
        SessionPanelDesk desk;
        desk.compositing.on = false;
        desk.panel->appear();
        const auto isCut = [&] {
            const QRegion& left = desk.panels.cuts.at(desk.panel.get());
            return !left.isEmpty() && !left.contains(QPoint(0, 0)) &&
                   !left.contains(QPoint(639, 43)) && left.contains(QPoint(320, 0)) &&
                   left.contains(QPoint(0, 22)) && left.contains(QPoint(639, 22));
        };
        QVERIFY(isCut());
        QCOMPARE(desk.look().pixelColor(320, 3).alpha(), 255);
        // And as what blends comes and goes.
        desk.compositing.change(true);
        QVERIFY(desk.panels.cuts.at(desk.panel.get()).isEmpty());
        QVERIFY(desk.look().pixelColor(320, 3).alpha() < 255);
        desk.compositing.change(false);
        QVERIFY(isCut());
    }

    void assistiveTechnologyKnowsItsParts()
    {
        const SessionPanelDesk desk;
        desk.panel->appear();
        const auto* panel = QAccessible::queryAccessibleInterface(desk.panel.get());
        QCOMPARE(panel->role(), QAccessible::Dialog);
        QCOMPARE(panel->text(QAccessible::Name), QStringLiteral("Captura en curso"));
        const auto* line = QAccessible::queryAccessibleInterface(&desk.line());
        QCOMPARE(line->role(), QAccessible::StaticText);
        QCOMPARE(line->text(QAccessible::Name), kScrolling);
        for (const char* title : {"Listo", "Cancelar"}) {
            PanelButton& button = desk.button(QString::fromLatin1(title));
            auto* accessible = QAccessible::queryAccessibleInterface(&button);
            QCOMPARE(accessible->role(), QAccessible::Button);
            QCOMPARE(accessible->text(QAccessible::Name), QString::fromLatin1(title));
            QVERIFY(!button.toolTip().isEmpty());
            QCOMPARE(accessible->text(QAccessible::Description), button.toolTip());
        }
    }

    // Which is read aloud; a count that goes on would never end.
    void newWordsAreNewsAndCountingIsNot()
    {
        const QString counting = QStringLiteral("Capturando… %1 px de alto");
        QVERIFY(StatusLine::isNews({}, kScrolling));
        QVERIFY(StatusLine::isNews(kScrolling, counting.arg(700)));
        QVERIFY(!StatusLine::isNews(counting.arg(700), counting.arg(1800)));
        QVERIFY(StatusLine::isNews(
            counting.arg(1800), QStringLiteral("Muy rápido: regresa un poco y baja más despacio")));
        QVERIFY(!StatusLine::isNews(QStringLiteral("● Grabando 0:09"),
                                    QStringLiteral("● Grabando 0:10")));
    }

    void frameIsCutToItsStrokesAndPaintsNothingElse()
    {
        const QRect captured(50, 60, 200, 100);
        for (const bool blends : {true, false}) {
            test::FakePanels panels;
            test::FakeCompositing compositing;
            compositing.on = blends;
            SessionFrame frame(panels, captured.adjusted(-4, -4, 4, 4), captured, 1, Qt::red);
            frame.appear();
            QCOMPARE(panels.roles, std::vector{PanelRole::frame});
            QCOMPARE(panels.shown.at(0).native, captured.adjusted(-4, -4, 4, 4));
            QVERIFY(!frame.accessibleName().isEmpty());
            QImage image(frame.size(), QImage::Format_ARGB32_Premultiplied);
            image.fill(Qt::transparent);
            frame.render(&image, {}, {}, QWidget::DrawChildren);
            const QRegion& left = panels.cuts.at(&frame);
            for (int y = 0; y < image.height(); ++y) {
                for (int x = 0; x < image.width(); ++x) {
                    const bool isStroke = left.contains(QPoint(x, y));
                    QCOMPARE(image.pixelColor(x, y), QColor(isStroke ? Qt::red : Qt::transparent));
                    QVERIFY(!isStroke || !QRect(4, 4, 200, 100).contains(x, y));
                }
            }
        }
    }
};

BRINDLECAM_TEST(TestSessionPanel);

} // namespace brindlecam

#include "tst_sessionpanel.moc"
