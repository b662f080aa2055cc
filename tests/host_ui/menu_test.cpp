// Menus and their items as scripts make them.
#include "host_ui/UiTest.h"

#include "ui/Elements.h"

#include <maya/MQtUtil.h>

#include <QAction>
#include <QMenu>
#include <QMenuBar>
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
        qobject_cast<QMenu*>(host::Elements::instance().find("testMenu", host::ElementKind::menu));
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
        qobject_cast<QMenu*>(host::Elements::instance().find("testMenu", host::ElementKind::menu));
    ASSERT_NE(menu, nullptr);
    EXPECT_TRUE(menu->menuAction()->isVisible());
    EXPECT_EQ(runString("setMenuMode(\"modelingMenuSet\")"), "animationMenuSet");
    EXPECT_FALSE(menu->menuAction()->isVisible());
    EXPECT_EQ(runString("setMenuMode(\"animationMenuSet\")"), "modelingMenuSet");
    EXPECT_TRUE(menu->menuAction()->isVisible());
    EXPECT_THAT(errorOf("setMenuMode(\"noSet\")"), HasSubstr("noSet"));
    run("deleteUI -m testMenu");
}
