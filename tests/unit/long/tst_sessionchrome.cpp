#include "base/KeyCodes.h"
#include "long/SessionChrome.h"
#include "long/SessionPanel.h"
#include "look/PanelButton.h"
#include "notices/Activity.h"
#include "platform/Platform.h"
#include "platform/null/NullPlatform.h"
#include "support/FakeCompositing.h"
#include "support/FakeDisplays.h"
#include "support/FakeHotKeys.h"
#include "support/FakePanels.h"
#include "support/Install.h"
#include "support/TestCase.h"
#include "support/ToolTips.h"

#include <QPointer>

#include <functional>
#include <memory>
#include <optional>

namespace brindlecam {

using test::restOn;

namespace {

const ScreenInfo kChromeScreen{QStringLiteral("A"), QRect(0, 0, 1920, 1080), 1,
                               QRect(0, 0, 1920, 1040)};
constexpr QRect kCaptured(600, 300, 400, 200);

struct ChromeDesk {
    Platform platform = makeNullPlatform();
    test::FakeDisplays& displays = test::install<test::FakeDisplays>(platform.displays);
    test::FakePanels& panels = test::install<test::FakePanels>(platform.panels);
    test::FakeCompositing& compositing = test::install<test::FakeCompositing>(platform.compositing);
    test::FakeHotKeys& keys = test::install<test::FakeHotKeys>(platform.hotKeys);
    Activity activity;
    std::optional<SessionChrome> chrome{std::in_place, platform, activity};
    QStringList heard;

    ChromeDesk() { displays.all = {kChromeScreen}; }

    void show(const QRect& captured = kCaptured)
    {
        chrome->show({.captured = captured,
                      .screen = kChromeScreen,
                      .status = QStringLiteral("● Grabando 0:00"),
                      .doneTitle = QStringLiteral("Terminar"),
                      .color = Qt::red,
                      .onDone = [this] { heard << QStringLiteral("done"); },
                      .onCancel = [this] { heard << QStringLiteral("cancel"); }});
    }
    [[nodiscard]] PanelButton* button(const char* title) const
    {
        for (const auto& shown : panels.shown) {
            if (!shown.widget || !shown.widget->isVisible())
                continue;
            for (auto* each : shown.widget->findChildren<PanelButton*>()) {
                if (each->text() == QLatin1String(title))
                    return each;
            }
        }
        return nullptr;
    }
    static void letGoOfWhatIsGone()
    {
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
};

} // namespace

class TestSessionChrome final : public test::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void frameComesFirstThenThePanelThenTheKeys()
    {
        ChromeDesk desk;
        QStringList steps;
        desk.panels.onAssume = [&](PanelRole role) {
            steps << (role == PanelRole::frame          ? QStringLiteral("frame")
                      : role == PanelRole::sessionPanel ? QStringLiteral("panel")
                                                        : QStringLiteral("other"));
        };
        desk.keys.onTaken = [&](int keyCode) { steps << QString::number(keyCode); };
        desk.show();
        QCOMPARE(steps,
                 QStringList({QStringLiteral("frame"), QStringLiteral("panel"),
                              QStringLiteral("53"), QStringLiteral("36"), QStringLiteral("76")}));
        QCOMPARE(desk.panels.shown.at(0).native, kCaptured.adjusted(-4, -4, 4, 4));
        QCOMPARE(desk.panels.shown.at(1).native, QRect(480, 510, 640, 44));
        QVERIFY(desk.chrome->isShown());
        QCOMPARE(desk.chrome->status(), QStringLiteral("● Grabando 0:00"));
    }

    void keysAndButtonsEndIt_data()
    {
        using Act = std::function<void(ChromeDesk&)>;
        QTest::addColumn<Act>("act");
        QTest::addColumn<QString>("heard");
        const auto key = [](int code) {
            return Act([code](ChromeDesk& desk) { desk.keys.press(code, 0); });
        };
        const auto click = [](const char* title) {
            return Act([title](ChromeDesk& desk) {
                QTest::mouseClick(desk.button(title), Qt::LeftButton);
            });
        };
        const QString done = QStringLiteral("done");
        const QString cancel = QStringLiteral("cancel");
        QTest::newRow("Escape") << key(KeyCodes::kEscape) << cancel;
        QTest::newRow("Return") << key(KeyCodes::kReturn) << done;
        QTest::newRow("keypad Enter") << key(KeyCodes::kKeypadEnter) << done;
        QTest::newRow("the done button") << click("Terminar") << done;
        QTest::newRow("the other button") << click("Cancelar") << cancel;
    }
    void keysAndButtonsEndIt()
    {
        using Act = std::function<void(ChromeDesk&)>;
        QFETCH(Act, act);
        QFETCH(QString, heard);
        ChromeDesk desk;
        desk.show();
        act(desk);
        QCOMPARE(desk.heard, QStringList(heard));
        QVERIFY(desk.chrome->isShown()); // whether it ends is the owner's business
    }

    void keyOfAnotherProgramIsLeftOut()
    {
        ChromeDesk desk;
        desk.keys.heldByOthers = {{KeyCodes::kReturn, 0}};
        desk.show();
        QVERIFY(desk.chrome->isShown());
        desk.keys.press(KeyCodes::kReturn, 0);
        QVERIFY(desk.heard.isEmpty());
        desk.keys.press(KeyCodes::kKeypadEnter, 0);
        QTest::mouseClick(desk.button("Terminar"), Qt::LeftButton);
        desk.keys.press(KeyCodes::kEscape, 0);
        QCOMPARE(desk.heard, QStringList({QStringLiteral("done"), QStringLiteral("done"),
                                          QStringLiteral("cancel")}));
    }

    void textChangesWhileItIsShown()
    {
        ChromeDesk desk;
        desk.chrome->setText(QStringLiteral("too early"));
        desk.show();
        QCOMPARE(desk.chrome->status(), QStringLiteral("● Grabando 0:00"));
        desk.chrome->setText(QStringLiteral("● Grabando 0:01"));
        QCOMPARE(desk.chrome->status(), QStringLiteral("● Grabando 0:01"));
        desk.chrome->close();
        desk.chrome->setText(QStringLiteral("too late"));
        QCOMPARE(desk.chrome->status(), QString());
    }

    void closeTakesAllOfItAwayAsOftenAsWanted()
    {
        ChromeDesk desk;
        desk.chrome->close();
        desk.show();
        desk.show();
        ChromeDesk::letGoOfWhatIsGone();
        QCOMPARE(desk.panels.visibleNow(), 2);
        QCOMPARE(desk.keys.registered.size(), std::size_t(3));
        QCOMPARE(desk.keys.duplicates, 0);
        int onScreenAtSwallow = 0;
        desk.panels.onSwallow = [&] { onScreenAtSwallow = desk.panels.visibleNow(); };
        desk.chrome->close();
        QCOMPARE(onScreenAtSwallow, 2);
        QCOMPARE(desk.panels.visibleNow(), 0);
        QVERIFY(desk.keys.registered.empty());
        QVERIFY(!desk.chrome->isShown());
        onScreenAtSwallow = -1;
        desk.chrome->close();
        QCOMPARE(onScreenAtSwallow, -1);
        QVERIFY(desk.heard.isEmpty());
        desk.show();
        desk.keys.press(KeyCodes::kEscape, 0);
        QCOMPARE(desk.heard, QStringList(QStringLiteral("cancel")));
    }

    void callbackMayCloseItOrEndIt_data()
    {
        QTest::addColumn<bool>("byKey");
        QTest::addColumn<bool>("ends");
        for (const bool byKey : {true, false}) {
            for (const bool ends : {true, false}) {
                QTest::addRow("%s, %s", byKey ? "key" : "button", ends ? "ended" : "closed")
                    << byKey << ends;
            }
        }
    }
    void callbackMayCloseItOrEndIt()
    {
        QFETCH(bool, byKey);
        QFETCH(bool, ends);
        ChromeDesk desk;
        auto held = std::make_shared<int>(7);
        const std::weak_ptr<int> watched = held;
        QPointer<PanelButton> button;
        bool ended = false;
        bool wasWhole = false;
        desk.chrome->show({.captured = kCaptured,
                           .screen = kChromeScreen,
                           .status = {},
                           .doneTitle = QStringLiteral("Terminar"),
                           .color = Qt::red,
                           .onDone =
                               [&, held = std::move(held)] {
                                   if (ends)
                                       desk.chrome.reset();
                                   else
                                       desk.chrome->close();
                                   ended = true;
                                   // Whoever is at work here goes later.
                                   wasWhole = !watched.expired() && button;
                               },
                           .onCancel = {}});
        button = desk.button("Terminar");
        if (byKey)
            desk.keys.press(KeyCodes::kReturn, 0);
        else
            QTest::mouseClick(button.data(), Qt::LeftButton);
        QVERIFY(ended);
        QVERIFY(wasWhole);
        QVERIFY(watched.expired());
        QCOMPARE(desk.panels.visibleNow(), 0);
        QVERIFY(desk.keys.registered.empty());
        ChromeDesk::letGoOfWhatIsGone();
        for (const auto& shown : desk.panels.shown)
            QVERIFY(!shown.widget);
    }

    void callbacksAreForgotten()
    {
        ChromeDesk desk;
        const auto held = std::make_shared<int>(7);
        desk.chrome->show({.captured = kCaptured,
                           .screen = kChromeScreen,
                           .status = {},
                           .doneTitle = {},
                           .color = Qt::red,
                           .onDone = [held] {},
                           .onCancel = [held] {}});
        QVERIFY(held.use_count() > 1);
        desk.chrome->close();
        QCOMPARE(held.use_count(), 1L);
    }

    void panelOverTheRectangleCanBeWithdrawn()
    {
        ChromeDesk desk;
        desk.show(kChromeScreen.visibleFrame);
        QVERIFY(desk.button("Terminar"));
        QVERIFY(desk.chrome->withdrawPanel());
        QVERIFY(!desk.button("Terminar"));
        QVERIFY(desk.chrome->isShown());
        QVERIFY(!desk.chrome->withdrawPanel());
        desk.chrome->setText(QStringLiteral("nobody sees this"));
        desk.keys.press(KeyCodes::kReturn, 0);
        QCOMPARE(desk.heard, QStringList(QStringLiteral("done")));
        desk.chrome->close();
        QVERIFY(!desk.chrome->isShown());
    }

    void panelBesideTheRectangleStays()
    {
        ChromeDesk desk;
        desk.show();
        QVERIFY(!desk.chrome->withdrawPanel());
        QVERIFY(desk.button("Terminar"));
    }

    void panelStaysWhereNoKeyWouldEndTheSession()
    {
        ChromeDesk desk;
        desk.keys.heldByOthers = {{53, 0}, {36, 0}, {76, 0}};
        desk.show(kChromeScreen.visibleFrame);
        QVERIFY(!desk.chrome->withdrawPanel());
        QVERIFY(desk.button("Terminar"));
    }

    void displaysMayChangeMeanwhile()
    {
        ChromeDesk desk;
        desk.show();
        desk.displays.all.clear();
        desk.displays.change();
        QVERIFY(desk.chrome->isShown());
        QVERIFY(restOn(*desk.button("Terminar"))); // there is no screen for a tip
        desk.chrome->setText(QStringLiteral("● Grabando 0:02"));
        QTest::mouseClick(desk.button("Terminar"), Qt::LeftButton);
        QCOMPARE(desk.heard, QStringList(QStringLiteral("done")));
        desk.chrome->close();
        QCOMPARE(desk.panels.visibleNow(), 0);
    }

    void tipStandsBesideTheCapturedRectangleAndGoesWithTheChrome()
    {
        ChromeDesk desk;
        desk.show();
        QVERIFY(restOn(*desk.button("Terminar")));
        QCOMPARE(desk.panels.shown.size(), std::size_t(3));
        QCOMPARE(desk.panels.roles.back(), PanelRole::toast);
        QVERIFY(!desk.panels.shown.back().native.intersects(kCaptured));
        QVERIFY(desk.panels.shown.back().native.top() > kCaptured.bottom());
        desk.chrome->close();
        QCOMPARE(desk.panels.visibleNow(), 0);
        // Where it could only lie over what is captured there is none.
        desk.show(kChromeScreen.native);
        const std::size_t before = desk.panels.shown.size();
        QVERIFY(restOn(*desk.button("Cancelar")));
        QVERIFY(!test::qtShowsATip());
        QCOMPARE(desk.panels.shown.size(), before);
    }
};

BRINDLECAM_TEST(TestSessionChrome);

} // namespace brindlecam

#include "tst_sessionchrome.moc"
