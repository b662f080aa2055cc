#include "render/CameraFit.h"
#include "render/Frame.h"

#include <cmath>
#include <gtest/gtest.h>

using host::CameraLens;
using host::Frame;

namespace {

Frame frameOf(const CameraLens& lens, int width, int height) {
    Frame frame;
    frame.width = width;
    frame.height = height;
    frame.projection = host::projectionMatrix(lens, double(width) / height);
    return frame;
}

/// Width and height in port pixels of the film, seen at some distance.
std::pair<double, double> filmSize(const CameraLens& lens, int width, int height) {
    const Frame frame = frameOf(lens, width, height);
    const double distance = 7;
    const double unit = lens.orthographic
                            ? lens.orthographicWidth / (lens.apertureWidth * lens.squeeze)
                            : distance * 25.4 / lens.focalLength;
    const double x = lens.apertureWidth * lens.squeeze / 2 * unit;
    const double y = lens.apertureHeight / 2 * unit;
    const auto low = frame.project(MPoint(-x, -y, -distance));
    const auto high = frame.project(MPoint(x, y, -distance));
    return {high.x - low.x, high.y - low.y};
}

TEST(CameraFit, FilmFitsDecideWhichSideOfTheFilmFillsTheView) {
    CameraLens lens;
    lens.apertureWidth = 1.5;
    lens.apertureHeight = 1;
    struct Case {
        int fit;
        int width, height;
        double film; ///< Expected width of the film in pixels.
    };
    for (const Case& c :
         {Case{0, 1600, 800, 1600}, Case{0, 800, 800, 1200}, Case{1, 1600, 800, 1600},
          Case{1, 800, 800, 800}, Case{2, 1600, 800, 1200}, Case{2, 800, 800, 1200},
          Case{3, 1600, 800, 1200}, Case{3, 800, 800, 800}}) {
        SCOPED_TRACE("fit " + std::to_string(c.fit) + " in " + std::to_string(c.width));
        lens.filmFit = c.fit;
        lens.overscan = 1;
        EXPECT_NEAR(filmSize(lens, c.width, c.height).first, c.film, 1e-6);
        EXPECT_NEAR(filmSize(lens, c.width, c.height).second, c.film / 1.5, 1e-6);
        lens.overscan = 1.3;
        EXPECT_NEAR(filmSize(lens, c.width, c.height).first, c.film / 1.3, 1e-6);
    }
}

TEST(CameraFit, PanAndZoomMoveAndScaleThePicture) {
    CameraLens lens;
    lens.filmFit = 1;
    lens.panX = lens.apertureWidth / 4;
    lens.zoom = 0.5;
    EXPECT_NEAR(filmSize(lens, 1000, 500).first, 1000, 1e-6) << "not enabled";
    lens.panZoom = true;
    EXPECT_NEAR(filmSize(lens, 1000, 500).first, 2000, 1e-6);
    EXPECT_NEAR(frameOf(lens, 1000, 500).project(MPoint(0, 0, -5)).x, 0, 1e-6)
        << "a quarter of the film is half of what is left of it";
    for (const double zoom : {0.0, -3.0}) {
        lens.zoom = zoom;
        EXPECT_NEAR(filmSize(lens, 1000, 500).first, 1e6, 1) << "as 0.001";
    }
}

TEST(CameraFit, OrthographicWidthFillsTheView) {
    CameraLens lens;
    lens.orthographic = true;
    lens.orthographicWidth = 20;
    const Frame frame = frameOf(lens, 400, 300);
    EXPECT_NEAR(frame.project(MPoint(10, 0, -5)).x, 400, 1e-9);
    EXPECT_NEAR(frame.project(MPoint(10, 0, -500)).x, 400, 1e-9) << "whatever the distance";
    EXPECT_NEAR(frame.project(MPoint(0, 7.5, -5)).y, 300, 1e-9);
}

TEST(CameraFit, ProjectionAndItsInverseAgreeAndKnowWhatIsClipped) {
    for (const bool orthographic : {false, true}) {
        SCOPED_TRACE(orthographic ? "orthographic" : "perspective");
        CameraLens lens;
        lens.orthographic = orthographic;
        lens.filmOffsetX = 0.2;
        const Frame frame = frameOf(lens, 640, 360);
        for (const double depth : {-0.9, 0.0, 0.5}) {
            SCOPED_TRACE("depth " + std::to_string(depth));
            const MPoint world = frame.unproject(100.25, 300.5, depth);
            const auto back = frame.project(world);
            EXPECT_NEAR(back.x, 100.25, 1e-6);
            EXPECT_NEAR(back.y, 300.5, 1e-6);
            EXPECT_NEAR(back.depth, depth, 1e-6);
            EXPECT_TRUE(back.inside(640, 360));
        }
        EXPECT_TRUE(frame.project(MPoint(0, 0, 5)).clipped()) << "behind the camera";
        EXPECT_TRUE(frame.project(MPoint(0, 0, -0.05)).clipped()) << "before the near plane";
        EXPECT_TRUE(frame.project(MPoint(0, 0, -20000)).clipped());
        EXPECT_FALSE(frame.project(MPoint(0, 0, 0)).inside(640, 360));
        EXPECT_TRUE(std::isfinite(frame.project(MPoint(1, 1, 0)).x));
    }
}

} // namespace
