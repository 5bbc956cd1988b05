#include "platform/x11/keys/MenuLook.h"
#include "support/TestCase.h"

namespace brindlecam {

using x11::MenuLook;
using Type = MenuLook::Type;
using Likeness = MenuLook::Likeness;

/// Rows as they were seen on real desktops.
class TestMenuLook final : public test::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void menusAreToldByTheirLook_data()
    {
        QTest::addColumn<MenuLook>("look");
        QTest::addColumn<Likeness>("likeness");
        QTest::newRow("openbox: menu") << MenuLook{.type = Type::menu} << Likeness::certain;
        QTest::newRow("GTK, Chromium: menu")
            << MenuLook{.type = Type::menu, .overrideRedirect = true, .transient = true}
            << Likeness::certain;
        QTest::newRow("Qt: context menu, combo box")
            << MenuLook{.type = Type::normal, .overrideRedirect = true, .transient = true}
            << Likeness::likely;
        QTest::newRow("a menu that was torn off")
            << MenuLook{.type = Type::menu, .managed = true} << Likeness::none;
        QTest::newRow("a program's window")
            << MenuLook{.type = Type::normal, .managed = true, .transient = true} << Likeness::none;
        QTest::newRow("the same without a window manager")
            << MenuLook{.type = Type::normal, .transient = true} << Likeness::none;
        QTest::newRow("openbox: list of windows while Alt is held")
            << MenuLook{.overrideRedirect = true} << Likeness::none;
        QTest::newRow("a tooltip, what is dragged")
            << MenuLook{.type = Type::other, .overrideRedirect = true, .transient = true}
            << Likeness::none;
        QTest::newRow("Qt: a window of its own that overrides")
            << MenuLook{.type = Type::normal, .overrideRedirect = true} << Likeness::none;
        QTest::newRow("a screen locker, an old game") << MenuLook{.type = Type::normal,
                                                                  .overrideRedirect = true,
                                                                  .transient = true,
                                                                  .fillsScreen = true}
                                                      << Likeness::none;
    }
    void menusAreToldByTheirLook()
    {
        QFETCH(MenuLook, look);
        QFETCH(Likeness, likeness);
        QCOMPARE(look.likeness(), likeness);
    }
};

BRINDLECAM_TEST(TestMenuLook);

} // namespace brindlecam

#include "tst_menulook.moc"
