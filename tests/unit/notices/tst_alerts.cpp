#include "notices/Alerts.h"
#include "support/FakePanels.h"
#include "support/TestCase.h"

#include <QDialogButtonBox>
#include <QLabel>
#include <QMessageBox>
#include <QPushButton>

namespace brindlecam {

namespace {

using Choice = std::optional<std::optional<int>>; ///< outer: was there an answer at all

const AlertContent kQuestion{
    .message = QStringLiteral("¿Permiso?"),
    .informative = QStringLiteral("Actívalo <ya> (detalle)"),
    .buttons = {QStringLiteral("Abrir Ajustes"), QStringLiteral("Cancelar")}};

/// A desk with alerts, and the last answer.
struct AlertDesk {
    test::FakePanels panels;
    Alerts alerts{panels};
    Choice answer;

    void ask(const AlertContent& content = kQuestion)
    {
        alerts.show(content, [this](std::optional<int> index) { answer = index; });
    }
    QMessageBox* box() const
    {
        return panels.shown.empty() ? nullptr
                                    : qobject_cast<QMessageBox*>(panels.shown.back().widget.data());
    }
};

/// The visible buttons from left to right.
QList<QPushButton*> buttonsOf(const QMessageBox& box)
{
    QList<QPushButton*> buttons;
    for (QPushButton* button : box.findChildren<QPushButton*>()) {
        if (button->isVisible())
            buttons.append(button);
    }
    std::sort(buttons.begin(), buttons.end(),
              [](auto* left, auto* right) { return left->x() < right->x(); });
    return buttons;
}

} // namespace

class TestAlerts final : public test::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void opensOnTopWithoutBlockingTheLoop()
    {
        AlertDesk desk;
        desk.ask();
        QVERIFY(desk.box());
        QVERIFY(desk.box()->isVisible());
        QCOMPARE(desk.box()->windowModality(), Qt::NonModal);
        QVERIFY(desk.box()->windowFlags() & Qt::WindowStaysOnTopHint);
        QCOMPARE(desk.panels.roles, std::vector{PanelRole::dialog});
        QVERIFY(desk.panels.focused.back() == desk.box());
        QVERIFY(!desk.answer);
    }

    void standsWhereItIsSaid()
    {
        AlertDesk desk;
        AlertContent elsewhere = kQuestion;
        elsewhere.within = QRect(2000, 100, 800, 600);
        desk.ask(elsewhere);
        QVERIFY((desk.box()->geometry().center() - elsewhere.within.center()).manhattanLength() <
                60);
    }

    void saysItsTextsAsTheyStand()
    {
        AlertDesk desk;
        desk.ask();
        QCOMPARE(desk.box()->text(), kQuestion.message);
        QCOMPARE(desk.box()->informativeText(), kQuestion.informative);
        for (const QLabel* label : desk.box()->findChildren<QLabel*>()) {
            if (!label->text().isEmpty())
                QCOMPARE(label->textFormat(), Qt::PlainText);
        }
    }

    void theMessageIsBoldAndTheRestIsNot()
    {
        AlertDesk desk;
        desk.ask();
        const auto* message = desk.box()->findChild<QLabel*>(QStringLiteral("qt_msgbox_label"));
        const auto* rest =
            desk.box()->findChild<QLabel*>(QStringLiteral("qt_msgbox_informativelabel"));
        QVERIFY(message->font().bold());
        QVERIFY(!rest->font().bold());
    }

    void buttonsStandInTheOrderGivenAndTheFirstIsTheDefault()
    {
        AlertDesk desk;
        AlertContent three = kQuestion;
        three.buttons << QStringLiteral("Más tarde");
        desk.ask(three);
        const QList<QPushButton*> buttons = buttonsOf(*desk.box());
        QStringList titles;
        for (const QPushButton* button : buttons)
            titles << button->text();
        QCOMPARE(titles, three.buttons);
        QCOMPARE(desk.box()->defaultButton(), buttons.first());
    }

    void withoutButtonsThereIsOneToAcceptIt()
    {
        AlertDesk desk;
        desk.ask({.message = QStringLiteral("Hola"), .informative = {}, .buttons = {}});
        QCOMPARE(buttonsOf(*desk.box()).size(), 1);
        QCOMPARE(buttonsOf(*desk.box()).first()->text(), QStringLiteral("Aceptar"));
    }

    void theChosenButtonIsTheAnswer_data()
    {
        QTest::addColumn<int>("index");
        QTest::newRow("first") << 0;
        QTest::newRow("second") << 1;
    }
    void theChosenButtonIsTheAnswer()
    {
        QFETCH(int, index);
        AlertDesk desk;
        desk.ask();
        buttonsOf(*desk.box()).at(index)->click();
        QVERIFY(desk.answer);
        QCOMPARE(*desk.answer, std::optional(index));
        QTRY_VERIFY(!desk.panels.shown.back().widget);
    }

    void returnTakesTheFirstButton()
    {
        AlertDesk desk;
        desk.ask();
        QTest::keyClick(desk.box(), Qt::Key_Return);
        QVERIFY(desk.answer);
        QCOMPARE(*desk.answer, std::optional(0));
    }

    void escapeAndClosingChooseNothing()
    {
        for (const bool single : {false, true}) {
            AlertContent content = kQuestion;
            if (single)
                content.buttons.clear();
            AlertDesk escaped;
            escaped.ask(content);
            QTest::keyClick(escaped.box(), Qt::Key_Escape);
            QVERIFY(escaped.answer);
            QCOMPARE(*escaped.answer, std::nullopt);

            AlertDesk closed;
            closed.ask(content);
            closed.box()->close();
            QVERIFY(closed.answer);
            QCOMPARE(*closed.answer, std::nullopt);
        }
    }

    void aSessionHidesThemAndBringsThemBack()
    {
        AlertDesk desk;
        desk.ask();
        const QPointer<QMessageBox> first = desk.box();
        desk.alerts.suspend();
        QVERIFY(!first->isVisible());
        desk.ask();
        QCOMPARE(desk.panels.visibleNow(), 0);
        QVERIFY(!desk.answer);
        desk.alerts.resume();
        QVERIFY(first->isVisible());
        QCOMPARE(desk.panels.visibleNow(), 2);
    }

    void closedOnesDoNotComeBack()
    {
        AlertDesk desk;
        desk.ask();
        desk.box()->close();
        desk.alerts.suspend();
        desk.alerts.resume();
        QCOMPARE(desk.panels.visibleNow(), 0);
    }

    void alertsStillOpenAtTheEndAreTakenDown()
    {
        test::FakePanels panels;
        {
            Alerts alerts(panels);
            alerts.show(kQuestion);
        }
        QVERIFY(!panels.shown.back().widget);
    }
};

BRINDLECAM_TEST(TestAlerts);

} // namespace brindlecam

#include "tst_alerts.moc"
