// How the flags of modelEditor change what a view shows.
#include "host_ui/UiTest.h"

#include <gmock/gmock.h>

using testing::HasSubstr;

namespace {

/// How many pixels differ from the empty view.
class ModelEditor : public uitest::UiTest {
protected:
    void SetUp() override {
        UiTest::SetUp();
        run("modelEditor -e -grid false modelPanel4");
        empty = picture();
        run("polySphere -r 4 -sx 8 -sy 6 -n ball; spaceLocator; select -cl");
    }
    QImage picture() { return view().view().renderToImage({320, 240}); }
    int shown() {
        const QImage now = picture();
        int count = 0;
        for (int y = 0; y < now.height(); ++y)
            for (int x = 0; x < now.width(); ++x)
                count += now.pixel(x, y) != empty.pixel(x, y);
        return count;
    }
    int shownWith(const std::string& flags) {
        run("modelEditor -e " + flags + " modelPanel4");
        return shown();
    }
    QImage empty;
};

} // namespace

TEST_F(ModelEditor, FlagsChangeThePicture) {
    const int shaded = shown();
    ASSERT_GT(shaded, 200);
    const QImage smooth = picture();
    const int wire = shownWith("-da wireframe");
    EXPECT_LT(wire, shaded / 2);
    const int box = shownWith("-displayAppearance boundingBox");
    EXPECT_LT(box, wire);
    EXPECT_LT(shownWith("-da points"), wire);
    shownWith("-da flatShaded");
    EXPECT_NE(picture(), smooth);
    EXPECT_EQ(shownWith("-da smoothShaded"), shaded);
    EXPECT_EQ(picture(), smooth) << "as before";
    for (const char* flags : {"-wos", "-xr", "-dl none -xr off -wos"}) {
        run("modelEditor -e " + std::string(flags) + " on modelPanel4");
        EXPECT_NE(picture(), smooth) << flags;
    }
    run("modelEditor -e -wireframeOnShaded off -xray off -displayLights default modelPanel4");
    EXPECT_EQ(picture(), smooth);

    const int cross = shownWith("-pm false");
    EXPECT_GT(cross, 0);
    EXPECT_LT(cross, shaded / 4);
    EXPECT_EQ(shownWith("-locators 0"), 0);
    EXPECT_EQ(runInt("modelEditor -q -alo modelPanel4"), 0);
    EXPECT_EQ(shownWith("-alo true"), shaded);
    EXPECT_EQ(shownWith("-alo false -polymeshes true"), shaded) << "the sphere hides the cross";
    EXPECT_EQ(runInt("modelEditor -q -nurbsCurves modelPanel4"), 0);
}

TEST_F(ModelEditor, WrongValuesChangeNothing) {
    const QImage before = picture();
    for (const char* flags : {"-pm off -da glass", "-pm off -dl candles", "-pm off -rnm none",
                              "-pm off -camera nobody", "-pm off -shiny on", "-pm"})
        EXPECT_NE(errorOf("modelEditor -e " + std::string(flags) + " modelPanel4"), "") << flags;
    EXPECT_EQ(picture(), before);
    EXPECT_EQ(runInt("modelEditor -q -polymeshes modelPanel4"), 1);
    EXPECT_EQ(errorOf("modelEditor -q -pm nobody"), "Object 'nobody' not found.");
    EXPECT_EQ(errorOf("modelEditor -q -shiny modelPanel4"), "Invalid flag '-shiny'.");
    EXPECT_EQ(errorOf("modelPanel -cam nobody -p viewPanes lost"),
              "No camera 'nobody' to look through.");
    EXPECT_EQ(runInt("modelPanel -exists lost"), 0);
    EXPECT_EQ(runString("panel -e -label Main modelPanel4; getPanel -withLabel Main"),
              "modelPanel4");
}
