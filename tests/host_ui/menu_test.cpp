// Menus and their items as scripts make them.
#include "host_ui/UiTest.h"
#include "ui/Elements.h"

#include <QAction>
#include <QMenu>
#include <QMenuBar>

#include <maya/MQtUtil.h>

#include <gmock/gmock.h>

using testing::HasSubstr;

class Menus : public uitest::UiTest {
protected:
    QAction* item(const std::string& path) { return MQtUtil::findMenuItem(path.c_str()); }
};

TEST_F(Menus, ItemsHaveFullPathsAndRunTheirScripts) {
    const std::string menu =
        runString("global string $gMainWindow;"
                  "menu -parent $gMainWindow -tearOff true -label \"Say \\\"hi\\\"\" testMenu");
    EXPECT_EQ(menu, "MayaWindow|testMenu");
    EXPECT_EQ(runInt("menu -exists testMenu"), 1);
    EXPECT_EQ(runString("menu -q -label testMenu"), "Say \"hi\"");
    const std::string plain = runString("menuItem -label \"Do\" -command \"$menuTest = 5\" doIt");
    EXPECT_EQ(plain, "MayaWindow|testMenu|doIt");
    run("global int $menuTest = 0;");
    item(plain)->trigger();
    EXPECT_EQ(runInt("$menuTest"), 5);
    EXPECT_EQ(runString("menuItem -q -label doIt"), "Do");
    EXPECT_THAT(errorOf("menuItem -label \"x\" doIt"), HasSubstr("not unique"));
    EXPECT_THAT(errorOf("menuItem -shiny true"), HasSubstr("-shiny"));
    EXPECT_THAT(errorOf("menuItem -e -label \"x\" nobody"), HasSubstr("nobody"));

    run("deleteUI -m testMenu");
    EXPECT_EQ(runInt("menu -exists testMenu"), 0);
    EXPECT_EQ(runInt("menuItem -exists doIt"), 0);
    EXPECT_EQ(item(plain), nullptr);
    EXPECT_THAT(errorOf("deleteUI -m testMenu"), HasSubstr("testMenu"));
}

TEST_F(Menus, SubMenusRadioAndCheckItems) {
    run("global string $gMainWindow; menu -parent $gMainWindow -label M testMenu;"
        "menuItem -subMenu true -label \"Tools\" sub;"
        "radioMenuItemCollection;"
        "menuItem -radioButton true -label A -command \"$radioTest = \\\"A\\\"\" itemA;"
        "menuItem -radioButton false -label B -command \"$radioTest = \\\"B\\\"\" itemB;"
        "setParent -menu ..;"
        "menuItem -checkBox false -label C -command \"$checkTest = #1\" itemC;"
        "menuItem -divider true; global string $radioTest; global int $checkTest;");
    EXPECT_EQ(runString("menuItem -e -enable true itemA; menuItem -q -label sub"), "Tools");
    EXPECT_EQ(runInt("menuItem -q -radioButton itemA"), 1);
    item("itemB")->trigger();
    EXPECT_EQ(runString("$radioTest"), "B");
    EXPECT_EQ(runInt("menuItem -q -radioButton itemA"), 0);
    run("menuItem -e -radioButton on itemA");
    EXPECT_EQ(runInt("menuItem -q -radioButton itemB"), 0);
    EXPECT_EQ(runString("$radioTest"), "B") << "an edit runs no command";
    item("itemC")->trigger();
    EXPECT_EQ(runInt("$checkTest"), 1);
    EXPECT_EQ(runInt("size(`menu -q -itemArray testMenu`)"), 3);
    EXPECT_EQ(runString("menuItem -q -label \"MayaWindow|testMenu|sub|itemA\""), "A");
    run("deleteUI -m testMenu");
    EXPECT_EQ(runInt("menuItem -exists itemA"), 0);
}

TEST_F(Menus, OptionBoxesFollowTheirItemAndItemsGoWhereAsked) {
    run("global string $gMainWindow; global string $boxTest; menu -parent $gMainWindow testMenu;"
        "menuItem -label Cut -command \"$boxTest = \\\"cut\\\"\" cut;"
        "menuItem -optionBox true -command \"$boxTest = \\\"options\\\"\" cutBox;"
        "menuItem -label Last last; menuItem -insertAfter cutBox -label Between between;"
        "menuItem -insertAfter \"\" -label First first");
    const auto* menu =
        qobject_cast<QMenu*>(host::Elements::instance().find("testMenu", host::ElementKind::Menu));
    ASSERT_NE(menu, nullptr);
    QStringList shown;
    for (const QAction* action : menu->actions())
        shown.append(action->text());
    EXPECT_EQ(shown.join('/').toStdString(), "First/Cut/Cut \xE2\x96\xA1/Between/Last");
    item("cutBox")->trigger();
    EXPECT_EQ(runString("$boxTest"), "options");
    EXPECT_EQ(runInt("menuItem -q -isOptionBox cutBox"), 1);
    EXPECT_EQ(runInt("menuItem -q -isOptionBox cut"), 0);
    EXPECT_THAT(errorOf("menuItem -parent testMenu -divider true; menuItem -optionBox true"),
                HasSubstr("option box"));
    EXPECT_THAT(errorOf("menuItem -parent testMenu -insertAfter nobody -label x"),
                HasSubstr("nobody"));
    EXPECT_EQ(runInt("menuItem -e -data 7 -visible false cut; menuItem -q -data cut"), 7);
    EXPECT_FALSE(item("cut")->isVisible());

    run("menuItem -parent testMenu -subMenu true -label Sub sub; menuItem -label In in");
    EXPECT_EQ(runInt("menu -q -numberOfItems sub"), 1) << "a sub-menu is a menu";
    run("menu -e -deleteAllItems sub");
    EXPECT_EQ(runInt("menu -q -numberOfItems sub"), 0);
    EXPECT_EQ(runInt("menuItem -exists in"), 0);
    run("deleteUI -m testMenu");
}

TEST_F(Menus, AnItemMayDeleteItsOwnMenu) {
    run("global string $gMainWindow; menu -parent $gMainWindow -label M testMenu;"
        "menuItem -label X -command \"deleteUI -m testMenu\" itemX");
    item("itemX")->trigger();
    EXPECT_EQ(runInt("menu -exists testMenu"), 0);
    uitest::settle();
}

TEST_F(Menus, MenuSetsShowAndHide) {
    const std::string before = runString("menuSet -q -cms");
    EXPECT_EQ(before, "animationMenuSet");
    run("global string $gMainWindow; menu -parent $gMainWindow -label M testMenu;"
        "menuSet -am testMenu");
    const auto* menu =
        qobject_cast<QMenu*>(host::Elements::instance().find("testMenu", host::ElementKind::Menu));
    ASSERT_NE(menu, nullptr);
    EXPECT_TRUE(menu->menuAction()->isVisible());
    EXPECT_EQ(runString("setMenuMode(\"modelingMenuSet\")"), "animationMenuSet");
    EXPECT_FALSE(menu->menuAction()->isVisible());
    EXPECT_EQ(runString("setMenuMode(\"animationMenuSet\")"), "modelingMenuSet");
    EXPECT_TRUE(menu->menuAction()->isVisible());
    EXPECT_THAT(errorOf("setMenuMode(\"noSet\")"), HasSubstr("noSet"));
    run("deleteUI -m testMenu");
}

TEST_F(Menus, MenuSetsOfTheirOwn) {
    run("global string $gMainWindow; menu -p $gMainWindow a; menu -p $gMainWindow b;"
        "menuSet -label Drawing drawSet; menuSet -am a -im b 0 drawSet");
    EXPECT_EQ(runString("menuSet -q -cms"), "animationMenuSet");
    EXPECT_EQ(run("menuSet -q -menuArray drawSet").get<host::script::Strings>(),
              (host::script::Strings{"b", "a"}));
    run("menuSet -mm b 1 drawSet");
    EXPECT_EQ(run("menuSet -q -ma drawSet").get<host::script::Strings>(),
              (host::script::Strings{"a", "b"}));
    EXPECT_EQ(runString("menuSet -q -label drawSet"), "Drawing");
    EXPECT_EQ(runInt("menuSet -q -exists drawSet") + runInt("menuSet -q -nm drawSet"), 3);
    EXPECT_EQ(runInt("menuSet -q -exists nobody"), 0);
    auto* menu =
        qobject_cast<QMenu*>(host::Elements::instance().find("a", host::ElementKind::Menu));
    EXPECT_FALSE(menu->menuAction()->isVisible());
    EXPECT_EQ(runString("setMenuMode drawSet"), "animationMenuSet");
    EXPECT_TRUE(menu->menuAction()->isVisible());
    EXPECT_EQ(runString("setMenuMode"), "drawSet");
    EXPECT_THAT(errorOf("menuSet -rm a animationMenuSet"), HasSubstr("not in the menu set"));
    EXPECT_THAT(errorOf("menuSet -rms animationMenuSet"), HasSubstr("permanent"));
    run("deleteUI -m b; menuSet -rms drawSet");
    EXPECT_EQ(runString("menuSet -q -cms"), "animationMenuSet");
    EXPECT_TRUE(menu->menuAction()->isVisible()) << "in no set, it always shows";
    EXPECT_EQ(errorOf("menuSet -q -label drawSet"), "menuSet: there is no menu set 'drawSet'.");
    run("deleteUI -m a");
}

TEST_F(Menus, RadioItemsOverSeveralMenusAndQueriesOfItems) {
    run("global string $gMainWindow; menu -p $gMainWindow a; radioMenuItemCollection -gl on all;"
        "menuItem -rb on -cl all one; menu -p $gMainWindow b; menuItem -rb off -collection all two;"
        "radioMenuItemCollection own; menuItem -rb on three");
    item("two")->trigger();
    EXPECT_EQ(runInt("menuItem -q -rb one"), 0);
    EXPECT_EQ(runInt("menuItem -q -rb three"), 1);
    EXPECT_EQ(runInt("radioMenuItemCollection -q -global all"), 1);
    EXPECT_EQ(runInt("radioMenuItemCollection -q -gl own"), 0);
    EXPECT_EQ(runString("menuItem -q -collection three"), "MayaWindow|b|own");
    EXPECT_EQ(errorOf("radioMenuItemCollection -q -gl nobody"), "Object 'nobody' not found.");
    run("deleteUI -m a b");
    EXPECT_EQ(runInt("radioMenuItemCollection -exists all"), 1) << "it has no menu to go with";
    run("deleteUI all");
    EXPECT_THAT(errorOf("menu -p $gMainWindow c; menuItem -stp python bad"), HasSubstr("python"));
    EXPECT_EQ(runInt("menu -q -ni c"), 0);
    run("deleteUI -m c");
    EXPECT_THAT(errorOf("menuItem late"), HasSubstr("no current menu"));
}

TEST_F(Menus, WindowsHaveMenuBarsAndControlsPopups) {
    run("window -menuBar true -wh 200 100 -tlc 20 500 win; menu -label Own own; menuItem first;"
        "paneLayout; modelPanel panel; global string $popped; $popped = \"\";"
        "popupMenu -p panel -pmc \"$popped += \\\"post\\\"\" -pmo on pop; menuItem inPop; "
        "showWindow win");
    EXPECT_EQ(runString("menu -q -label own"), "Own");
    EXPECT_EQ(runInt("menuItem -exists \"win|own|first\""), 1);
    host::ModelPanel* panel = host::ModelPanel::find("panel");
    ASSERT_TRUE(QTest::qWaitForWindowExposed(panel->window()));
    auto* menu =
        qobject_cast<QMenu*>(host::Elements::instance().find("pop", host::ElementKind::Menu));
    for (int times = 0; times < 2; ++times) {
        moveTo(panel->viewWidget(), {30, 20});
        press(Qt::RightButton);
        EXPECT_TRUE(menu->isVisible());
        release(Qt::RightButton);
        menu->close();
        uitest::settle();
    }
    EXPECT_EQ(runString("$popped"), "post") << "once";
    run("deleteUI win");
    EXPECT_EQ(runInt("menu -exists pop") + runInt("menu -exists own"), 0);
}
