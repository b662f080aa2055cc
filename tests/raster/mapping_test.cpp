// View pixels to image pixels and back.
#include "tools/raster/Stroke.h"
#include "tools/raster/ViewToImage.h"

#include <QRect>

#include <gtest/gtest.h>

using namespace vellum;

TEST(ViewToImage, CornersOfTheSquare) {
    // A 1920 x 1080 view with the square as wide as the view: 420 pixels of it lie above and below.
    const ViewMapping m{1920, 1080, 0.0, 0.0, 1920.0};
    EXPECT_EQ(viewToImage({0, 1080 + 420}, m), QPoint(0, 0));
    EXPECT_EQ(viewToImage({1920, -420}, m), QPoint(1024, 1024));
    EXPECT_EQ(viewToImage({960, 540}, m), QPoint(512, 512));
    EXPECT_DOUBLE_EQ(viewPixelsPerImagePixel(m), 1.875);
}

TEST(ViewToImage, RoundsHalvesUpwardOnBothSidesOfZero) {
    const ViewMapping m{2048, 2048, 0.0, 0.0, 2048.0};         // two view pixels an image pixel
    EXPECT_EQ(viewToImage({1, 2048 - 1}, m), QPoint(1, 1));    // 0.5
    EXPECT_EQ(viewToImage({-1, 2048 + 1}, m), QPoint(0, 0));   // -0.5
    EXPECT_EQ(viewToImage({-3, 2048 + 3}, m), QPoint(-1, -1)); // -1.5
    EXPECT_EQ(viewToImage({2.99, 2048 - 2.99}, m), QPoint(1, 1));
}

TEST(ViewToImage, PanMovesTheSquare) {
    const ViewMapping plain{800, 600, 0.0, 0.0, 512.0};
    const ViewMapping panned{800, 600, 30.0, -12.5, 512.0};
    EXPECT_EQ(viewToImage({400 - 30, 300 + 12.5}, panned), viewToImage({400, 300}, plain));
}

TEST(ViewToImage, InverseIsExact) {
    for (const ViewMapping& m :
         {ViewMapping{1920, 1080, 0.0, 0.0, 1920.0}, ViewMapping{801, 599, 13.25, -7.5, 1333.0},
          ViewMapping{3000, 2000, -400.0, 90.0, 77.0}}) {
        for (const QPoint pixel : {QPoint(0, 0), QPoint(1023, 511), QPoint(-300, 2000)}) {
            EXPECT_EQ(viewToImage(imageToView(pixel, m), m), pixel);
        }
    }
}

TEST(ViewToImage, DegenerateViewsStayFiniteAndOutside) {
    const QRect canvas(0, 0, kCanvasSize, kCanvasSize);
    EXPECT_FALSE(canvas.contains(viewToImage({5, 5}, {800, 600, 0.0, 0.0, 0.0})));
    EXPECT_FALSE(canvas.contains(viewToImage({5, 5}, {800, 600, 0.0, 0.0, -3.0})));
    const QPoint far = viewToImage({1e300, -1e300}, {800, 600, 0.0, 0.0, 1e-3});
    EXPECT_GT(far.x(), 100'000);
    EXPECT_LE(far.x(), 1'000'000);
}
