#include "desktop/support/Buttons.h"
#include "desktop/support/CaptureTest.h"

#include <functional>
#include <optional>

namespace brindlecam::desktop {

/// The harness as assistive technology: the program's controls, found by their names.
class TestControls final : public CaptureTest {
    Q_OBJECT

private:
    static constexpr auto kPointer = "Mover la selección o una anotación";

    struct Session {
        DesktopOptions desktop{};
        QString scales{};
        std::size_t overlays = 1;
        QRect selected{300, 250, 400, 300};
    };

    /// A session with an area selected and the bars around it.
    void selects(const Session& session)
    {
        DesktopOptions options = session.desktop;
        options.accessibility = Accessibility::on;
        usePatternedDesktop(options);
        if (!session.scales.isEmpty())
            program().setScales(session.scales);
        program().writeSettings({{QStringLiteral("showLoupe"), false}});
        startProgram();
        input().moveTo(session.selected.topLeft());
        QVERIFY(openArea(session.overlays));
        select(session.selected);
    }

    [[nodiscard]] std::optional<Control> find(const char* name, ControlKind kind)
    {
        return controls().find(QString::fromUtf8(name), kind);
    }
    [[nodiscard]] std::optional<Control> look(const char* name,
                                              std::optional<ControlKind> kind = std::nullopt)
    {
        return controls().look(QString::fromUtf8(name), kind);
    }
    [[nodiscard]] bool is(const char* name, bool Control::*state)
    {
        const auto control = look(name);
        return control && (*control).*state;
    }
    /// What a session leaves behind moves the focus a little later than the session ends: a click
    /// may come to nothing then. Another one too soon would be a double click.
    [[nodiscard]] static bool isAnswered(const std::function<void()>& click,
                                         const std::function<bool()>& answer)
    {
        constexpr int kAnswer = 2000; // ms
        return waitUntil([&] {
            click();
            return waitUntil(answer, kAnswer);
        });
    }
    /// A button with the padding of its bar; the selection's frame is as green, but farther away.
    [[nodiscard]] static QRect around(const QRect& button)
    {
        const int padding = button.width() / 6;
        return button.adjusted(-padding, -padding, padding, padding);
    }
    /// What is as green as a chosen button there.
    [[nodiscard]] QRect seenGreen(const QRect& area)
    {
        const QColor green = QColor::fromRgbF(0.18F, 0.7F, 0.3F);
        const QImage now = screen().grab(area);
        QRect seen;
        for (int y = 0; y < now.height(); ++y) {
            for (int x = 0; x < now.width(); ++x) {
                if (now.pixelColor(x, y).rgb() == green.rgb())
                    seen |= QRect(x, y, 1, 1);
            }
        }
        return seen.translated(area.topLeft());
    }

private Q_SLOTS:
    void buttonsAreFoundWhereTheyAreSeen_data()
    {
        QTest::addColumn<Session>("session");
        QTest::newRow("at 1") << Session{};
        QTest::newRow("at 1.5") << Session{.scales = QStringLiteral("1.5")};
        QTest::newRow("at 2") << Session{.scales = QStringLiteral("2")};
        const DesktopOptions two{
            .screen = {.pixels = {2166, 768},
                       .monitors = {{QStringLiteral("LEFT"), QRect(0, 0, 800, 600)},
                                    {QStringLiteral("RIGHT"), QRect(800, 0, 1366, 768)}}}};
        for (const char* scales : {"LEFT=1;RIGHT=1.5", "LEFT=1;RIGHT=2", "LEFT=2;RIGHT=1"}) {
            const auto onRight = [&](QRect selected) {
                return Session{two, QString::fromLatin1(scales), 2, selected};
            };
            QTest::addRow("on the second monitor, %s", scales) << onRight({1100, 60, 300, 210});
            QTest::addRow("on the first monitor, %s", scales) << onRight({60, 60, 300, 210});
        }
        const DesktopOptions low{
            .screen = {.pixels = {1366, 1400},
                       .monitors = {{QStringLiteral("HIGH"), QRect(0, 0, 1366, 600)},
                                    {QStringLiteral("LOW"), QRect(0, 600, 1366, 800)}}}};
        QTest::newRow("on the lower monitor")
            << Session{low, QStringLiteral("HIGH=1;LOW=1.75"), 2, {210, 670, 350, 280}};
    }
    void buttonsAreFoundWhereTheyAreSeen()
    {
        QFETCH(Session, session);
        selects(session);
        if (QTest::currentTestFailed())
            return;
        const auto pointer = find(kPointer, ControlKind::button);
        QVERIFY(pointer);
        QVERIFY(waitUntil([&] { return seenGreen(around(pointer->pixels)) == pointer->pixels; }));
        QVERIFY(press("Cerrar"));
        QVERIFY(sessionIsOver());
    }

    void onlyWhatIsShownIsFound()
    {
        selects({});
        QVERIFY(find("Copiar", ControlKind::button));
        QVERIFY(!look("Opacidad del marcador"));
        QVERIFY(press("Color"));
        QVERIFY(find("Opacidad del marcador", ControlKind::slider));
        QVERIFY(!look("Grosor de la flecha"));
        input().tap(Qt::Key_Escape);
        QVERIFY(sessionIsOver());
        QVERIFY(waitUntil([this] { return !look("Copiar"); }));
    }

    void statesAreTold()
    {
        selects({});
        QVERIFY(find("Copiar", ControlKind::button));
        QVERIFY(is("Copiar", &Control::enabled));
        QVERIFY(!is("Grabar esta área como GIF", &Control::enabled));
        QVERIFY(is(kPointer, &Control::on));
        QVERIFY(press("Flecha"));
        QVERIFY(waitUntil([this] { return is("Flecha", &Control::on); }));
        QVERIFY(!is(kPointer, &Control::on));
    }

    void keysGoStraightToTheProgram()
    {
        selects({});
        QVERIFY(find(kPointer, ControlKind::button));
        QVERIFY(!is(kPointer, &Control::focused));
        input().tap(Qt::Key_Tab);
        QVERIFY(waitUntil([this] { return is(kPointer, &Control::focused); }));
        QCOMPARE(desktop().accessBus()->registry().detours(), 0);
    }

    void itemsOfAMenuAreFound()
    {
        selects({});
        QVERIFY(press(Buttons::kPin));
        QVERIFY(sessionIsOver());
        const auto pin = find("Captura fijada", ControlKind::other);
        QVERIFY(pin);
        std::optional<Control> copy;
        QVERIFY(isAnswered([&] { input().click(pin->pixels.center(), Button::right); },
                           [&] {
                               copy = look("Copiar", ControlKind::menuItem);
                               return copy.has_value();
                           }));
        input().moveTo(copy->pixels.center());
        QVERIFY(waitUntil([this] { return is("Copiar", &Control::focused); }));
        input().click(copy->pixels.center());
        QVERIFY(waitUntil([this] { return !look("Copiar"); }));
        QVERIFY(toastComes());
    }

    void buttonsOfDialogsAreFound_data()
    {
        QTest::addColumn<QString>("scale");
        for (const char* scale : {"1", "1.5", "2"})
            QTest::addRow("at %s", scale) << QString::fromLatin1(scale);
    }
    void buttonsOfDialogsAreFound()
    {
        QFETCH(QString, scale);
        selects({.desktop = {.screen = {.pixels = {1280, 1000}}}, .scales = scale});
        QVERIFY(press("Guardar"));
        QVERIFY(dialogOpens());
        QVERIFY(sessionIsOver());
        QVERIFY(press("Cancelar"));
        QVERIFY(dialogsAreGone());
        QVERIFY(captures().isEmpty());
    }

    void ofTwoTheOneInTheActiveWindowIsFound()
    {
        const QRect first(300, 100, 300, 200);
        const QRect second(300, 450, 300, 200);
        selects({.selected = first});
        QVERIFY(press(Buttons::kPin));
        QVERIFY(sessionIsOver());
        QVERIFY(openArea());
        select(second);
        QVERIFY(press(Buttons::kPin));
        QVERIFY(sessionIsOver());
        for (const QRect& pin : {first, second, first}) {
            QVERIFY(isAnswered([&] { input().click(pin.center()); },
                               [&] {
                                   const auto active = look("Captura fijada");
                                   return active && active->inActiveWindow && active->pixels == pin;
                               }));
        }
    }

    void programThatIsStartedAgainIsAskedAnew()
    {
        selects({});
        QVERIFY(find("Copiar", ControlKind::button));
        program().kill();
        QVERIFY(!look("Copiar"));
        startProgram();
        QVERIFY(openArea());
        QVERIFY(!look("Copiar"));
        select(Session().selected);
        QVERIFY(press("Copiar"));
        QVERIFY(sessionIsOver());
    }

    void programOnAnotherBusIsAskedThere()
    {
        selects({.desktop = {.bus = MessageBus::session}});
        QVERIFY(find("Copiar", ControlKind::button));
        desktop().endMessageBus();
        QVERIFY(!look("Copiar"));
        desktop().startMessageBus();
        QVERIFY(!look("Copiar"));
        QCOMPARE(program().quit(), 0);
        const QString bus = QStringLiteral("DBUS_SESSION_BUS_ADDRESS");
        program().environment().insert(bus, desktop().environment().value(bus));
        startProgram();
        QVERIFY(openArea());
        select(Session().selected);
        QVERIFY(press("Copiar"));
        QVERIFY(sessionIsOver());
    }
};

} // namespace brindlecam::desktop

QTEST_GUILESS_MAIN(brindlecam::desktop::TestControls)

#include "tst_controls.moc"
