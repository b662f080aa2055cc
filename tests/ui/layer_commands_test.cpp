// What each click in the layer manager and in the layer dialogs issues, without any of them.
#include "document/LayerManager.h"
#include "ui/layers/LayerCommands.h"

#include <gmock/gmock.h>

namespace vellum::test {
namespace {

using layer_commands::LayerValues;
using testing::ElementsAre;
using testing::IsEmpty;

const LayerPlace kRow{QStringLiteral("cam"), 2};
const LayerPlace kNone{QStringLiteral("cam"), -1};
const QString kHostile = QStringLiteral("a\"; delete \\ 1\n&<b>");
const QString kQuoted = QStringLiteral("\"a\\\"; delete \\\\ 1\\n&<b>\"");

std::vector<std::string> texts(const PanelCommands& commands) {
    std::vector<std::string> all;
    for (const PanelCommand& command : commands)
        all.push_back(command.script.toStdString() + (command.echo ? " | echo" : "") +
                      (command.undo ? " | undo" : "") +
                      (command.when == PanelCommand::When::Idle ? " | idle" : ""));
    return all;
}

const char* const kDraw = "evalDeferred(\"if (`exists rvVellumUtil`) rvVellumUtil -draw\")";

TEST(LayerCommands, OfThePanel) {
    using namespace layer_commands;
    const LayerPlace hostile{kHostile, 0};
    const QString visible = QStringLiteral("V");
    const QString isStatic = QStringLiteral("S");
    const QString locked = QStringLiteral("L");
    const struct {
        const char* control;
        PanelCommands issued;
        std::vector<std::string> expected;
    } rows[] = {
        {"row", clickRow(kRow, false), {"rvVellumLayer -e -active 2 \"cam\" | undo", kDraw}},
        {"row that is drawn on", clickRow(kRow, true), {kDraw}},
        {"hide", clickVisibility(kRow, visible), {"rvVellumLayer -ev 0 2 \"cam\" | undo"}},
        {"show", clickVisibility(kRow, {}), {"rvVellumLayer -ev 1 2 \"cam\" | undo"}},
        {"state of 0", clickState(kRow, {}), {"rvVellumLayer -es 1 2 \"cam\" | undo"}},
        {"state of 1", clickState(kRow, isStatic), {"rvVellumLayer -es 2 2 \"cam\" | undo"}},
        {"state of 2", clickState(kRow, locked), {"rvVellumLayer -es 0 2 \"cam\" | undo"}},
        {"state of 3", clickState(kRow, stateText(3)), {"rvVellumLayer -es 1 2 \"cam\" | undo"}},
        {"up", moveUp(kRow), {"rvVellumLayer -move 2 1 \"cam\" | undo"}},
        {"up from the bottom", moveUp({QStringLiteral("cam"), 0}), {}},
        {"up of nothing", moveUp(kNone), {}},
        {"down", moveDown(kRow, 4), {"rvVellumLayer -move 2 3 \"cam\" | undo"}},
        {"down from the top", moveDown(kRow, 3), {}},
        {"down of nothing", moveDown(kNone, 3), {}},
        {"down without a camera", moveDown({QString(), 0}, 3), {}},
        {"delete", deleteLayer(kRow), {"rvVellumLayer -delete 2 \"cam\" | undo"}},
        {"delete nothing", deleteLayer(kNone), {}},
        {"delete without a camera", deleteLayer({QString(), 0}), {}},
        {"refresh", refresh(), {"evalDeferred(\"if (`exists rvVellumUtil`) rvVellumUtil -rlm\")"}},
        {"move to camera",
         moveToCamera(kRow, QStringLiteral("top")),
         {"rvVellumLayer -newCamera \"top\" -move 2 -1 \"cam\" | undo"}},
        {"move all",
         moveAllToCamera(QStringLiteral("cam"), QStringLiteral("top")),
         {"rvVellumLayer -moveAll \"top\" \"cam\" | undo"}},
        {"hostile camera",
         deleteLayer(hostile),
         {"rvVellumLayer -delete 0 " + kQuoted.toStdString() + " | undo"}},
    };
    for (const auto& row : rows)
        EXPECT_EQ(texts(row.issued), row.expected) << row.control;
    EXPECT_EQ(visibilityText(true), visible);
    EXPECT_EQ(visibilityText(false), QString());
    EXPECT_EQ(stateText(0), QString());
    EXPECT_EQ(stateText(1), isStatic);
    EXPECT_EQ(stateText(2), locked);
}

TEST(LayerCommands, OfTheNewLayer) {
    using layer_commands::addLayer;
    const std::string idle = "if (`exists rvVellumNode`) { rvVellumNode -l";
    const std::string thenDraw = std::string("; ") + kDraw + "; } | idle";
    const QString cam = QStringLiteral("cam");
    const QString ink = QStringLiteral("ink");
    EXPECT_THAT(texts(addLayer({ink, cam, 1}, true)),
                ElementsAre("rvVellumLayer -add -n \"ink\" -ls 1 \"cam\" | undo", kDraw));
    EXPECT_THAT(texts(addLayer({QString(), cam, 0}, true)),
                ElementsAre("rvVellumLayer -add -ls 0 \"cam\" | undo", kDraw));
    EXPECT_THAT(
        texts(addLayer({kHostile, cam, 0}, true)),
        ElementsAre("rvVellumLayer -add -n " + kQuoted.toStdString() + " -ls 0 \"cam\" | undo",
                    kDraw));
    EXPECT_THAT(texts(addLayer({ink, cam, 1}, false)),
                ElementsAre(idle + " -c \"cam\" -ln \"ink\" -ls 1" + thenDraw));
    EXPECT_THAT(texts(addLayer({QString(), QString(), 0}, false)),
                ElementsAre(idle + " -ls 0" + thenDraw));
}

TEST(LayerCommands, OfTheProperties) {
    const LayerValues before{QStringLiteral("ink"), QStringLiteral("cam"), true, 0};
    const auto changed = [&](auto change) {
        LayerValues after = before;
        change(after);
        return texts(layer_commands::changeLayer(kRow, before, after));
    };
    EXPECT_THAT(changed([](LayerValues&) {}), IsEmpty());
    EXPECT_THAT(changed([](LayerValues& after) { after.name.clear(); }), IsEmpty());
    EXPECT_THAT(changed([](LayerValues& after) { after.camera.clear(); }), IsEmpty());
    EXPECT_THAT(changed([](LayerValues& after) { after.visible = false; }),
                ElementsAre("rvVellumLayer -ev 0 2 \"cam\" | undo"));
    EXPECT_THAT(changed([](LayerValues& after) {
                    after = {kHostile, QStringLiteral("top"), false, 2};
                }),
                ElementsAre("rvVellumLayer -en " + kQuoted.toStdString() + " 2 \"cam\" | undo",
                            "rvVellumLayer -ev 0 2 \"cam\" | undo",
                            "rvVellumLayer -es 2 2 \"cam\" | undo",
                            "rvVellumLayer -newCamera \"top\" -move 2 -1 \"cam\" | undo"));
    // It has gone to another camera since, the very one that the user chose or not.
    const LayerPlace moved{QStringLiteral("top"), 5};
    LayerValues after = before;
    after.camera = QStringLiteral("top");
    after.state = 1;
    EXPECT_THAT(texts(layer_commands::changeLayer(moved, before, after)),
                ElementsAre("rvVellumLayer -es 1 5 \"top\" | undo"));
}

TEST(LayerListing, HasTheHighestIndexFirstAndFollowsItsLayers) {
    const QString cam = QStringLiteral("cam");
    const QString top = QStringLiteral("top");
    LayerManager document;
    for (const char* name : {"a", "b", "c"})
        document.addLayer(cam, -1, QString::fromLatin1(name));
    document.addLayer(top, -1, QStringLiteral("d"));
    ASSERT_TRUE(document.setActiveLayer(cam, 1, true));
    document.setLayerVisible(cam, 2, false);
    document.setLayerState(cam, 2, LayerState::Locked);
    const LayerListing listing = listLayers(document, {cam});
    ASSERT_EQ(listing.sections.size(), 2U);
    EXPECT_TRUE(listing.sections[0].isInScene);
    EXPECT_FALSE(listing.sections[1].isInScene);
    EXPECT_TRUE((listing.selected == LayerPlace{cam, 1}));
    const std::vector<LayerRow>& rows = listing.sections[0].rows;
    ASSERT_EQ(rows.size(), 3U);
    EXPECT_EQ(rows[0].name, QStringLiteral("c"));
    EXPECT_EQ(rows[0].index, 2);
    EXPECT_FALSE(rows[0].visible);
    EXPECT_EQ(rows[0].state, 2);
    EXPECT_TRUE(listing == listLayers(document, {cam}));

    document.moveLayer(cam, 2, 0);
    EXPECT_FALSE(listing == listLayers(document, {cam}));
    EXPECT_TRUE((findLayer(document, rows[0].id) == LayerPlace{cam, 0}));
    document.moveLayerToCamera(cam, 0, top, -1);
    EXPECT_TRUE((findLayer(document, rows[0].id) == LayerPlace{top, 1}));
    document.takeLayer(top, 1);
    EXPECT_FALSE(findLayer(document, rows[0].id).has_value());
}

} // namespace
} // namespace vellum::test
