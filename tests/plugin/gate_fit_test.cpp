#include "node/GateFit.h"

#include <gtest/gtest.h>

namespace vellum {
namespace {

GateFitInput camera(FilmFit fit, double cameraAspect, double renderAspect, int width, int height) {
    GateFitInput input;
    input.filmFit = fit;
    input.cameraAspect = cameraAspect;
    input.renderAspect = renderAspect;
    input.portWidth = width;
    input.portHeight = height;
    return input;
}

struct FitCase {
    const char* name;
    FilmFit fit;
    double cameraAspect;
    double renderAspect;
    int width;
    int height;
    double overscan;
    bool ortho;
    int size; // worked out by hand
};

class GateFitTable : public ::testing::TestWithParam<FitCase> {};

/// What a failing case is shown as.
void PrintTo(const FitCase& c, std::ostream* out) {
    *out << c.name;
}

TEST_P(GateFitTable, Side) {
    const FitCase& c = GetParam();
    GateFitInput input = camera(c.fit, c.cameraAspect, c.renderAspect, c.width, c.height);
    input.overscan = c.overscan;
    input.orthographic = c.ortho;
    const GateFit fit = fitToGate(input);
    EXPECT_EQ(fit.size, c.size);
    EXPECT_FLOAT_EQ(fit.halfSize, static_cast<float>(c.size) / 2.0F);
    EXPECT_FLOAT_EQ(fit.quadSize, static_cast<float>(c.size));
    EXPECT_EQ(fit.originX, c.width / 2.0);
    EXPECT_EQ(fit.originY, c.height / 2.0);
}

INSTANTIATE_TEST_SUITE_P(
    Films, GateFitTable,
    ::testing::Values(
        FitCase{"HorizontalFillsTheWidth", FilmFit::Horizontal, 1.5, 1.777, 1920, 1080, 1.0, false,
                1920},
        FitCase{"HorizontalOverscan", FilmFit::Horizontal, 1.5, 1.777, 1920, 1080, 1.3, false,
                1476},
        FitCase{"UnknownIsHorizontal", static_cast<FilmFit>(9), 1.5, 1.777, 800, 600, 1.0, false,
                800},
        FitCase{"VerticalUsesTheRenderAspect", FilmFit::Vertical, 1.5, 2.0, 1920, 1080, 1.0, false,
                2160},
        FitCase{"VerticalOverscan", FilmFit::Vertical, 1.5, 2.0, 1920, 1080, 2.0, true, 1080},
        // Port wider than the camera's gate, image narrower than the gate: k = 1.125 / 1.5.
        FitCase{"FillNarrowImage", FilmFit::Fill, 1.5, 1.125, 2000, 1000, 1.0, false, 1500},
        // Port wider than the gate, image wider than the gate: k = 1.
        FitCase{"FillWideImage", FilmFit::Fill, 1.5, 1.8, 2000, 1000, 1.0, false, 2000},
        // Port narrower than the gate, image narrower too: k = 1.25 / 1.
        FitCase{"FillNarrowPort", FilmFit::Fill, 1.5, 1.25, 1000, 1000, 1.0, false, 1250},
        // Port narrower than the gate, image wider: k = 1.5 / 1.
        FitCase{"FillNarrowPortWideImage", FilmFit::Fill, 1.5, 2.0, 1000, 1000, 1.0, false, 1500},
        FitCase{"FillOrthoHasNoCorrection", FilmFit::Fill, 1.5, 2.0, 1000, 1000, 1.0, true, 1000},
        FitCase{"OverscanNarrowImage", FilmFit::Overscan, 1.5, 1.125, 2000, 1000, 1.0, false, 1500},
        FitCase{"OverscanNarrowPort", FilmFit::Overscan, 1.5, 1.25, 1000, 1000, 1.0, false, 1000},
        FitCase{"OverscanOrtho", FilmFit::Overscan, 1.5, 2.0, 1000, 600, 1.0, true, 1200},
        FitCase{"EmptyPort", FilmFit::Fill, 1.5, 1.777, 0, 0, 1.0, false, 0},
        FitCase{"NoOverscanAtAll", FilmFit::Horizontal, 1.5, 1.777, 800, 600, 0.0, false, 0}),
    [](const auto& tested) { return tested.param.name; });

TEST(GateFit, ZoomScalesTheSquareOnlyWithPanZoom) {
    GateFitInput input = camera(FilmFit::Horizontal, 1.5, 1.777, 1920, 1080);
    input.zoom = 0.5;
    EXPECT_FLOAT_EQ(fitToGate(input).quadSize, 1920.0F) << "zoom counts only while enabled";
    input.panZoom = true;
    const GateFit zoomed = fitToGate(input);
    EXPECT_FLOAT_EQ(zoomed.quadSize, 3840.0F);
    EXPECT_FLOAT_EQ(zoomed.halfSize, 1920.0F);
    EXPECT_EQ(zoomed.size, 1920);
    for (const double useless : {0.0, -2.0}) {
        input.zoom = useless;
        EXPECT_FLOAT_EQ(fitToGate(input).quadSize, 1920.0F / 0.001F) << useless;
    }
}

TEST(GateFit, PanMovesTheSquareAndItsCornerAlike) {
    GateFitInput input = camera(FilmFit::Horizontal, 1.5, 1.777, 1001, 600);
    GateFit still = fitToGate(input);
    compensatePan(still, 10.0, 20.0);
    EXPECT_EQ(still.originX, 500.5) << "without pan nothing moves";
    EXPECT_EQ(still.panOffsetX, 0.0);

    input.panZoom = true;
    GateFit panned = fitToGate(input);
    compensatePan(panned, 600.0, 250.0);
    EXPECT_EQ(panned.originX, 600.0);
    EXPECT_EQ(panned.originY, 250.0);
    const QuadCorner corner = lowerLeftCorner(panned);
    EXPECT_FLOAT_EQ(corner.x, 600.0F - panned.quadSize / 2.0F);
    EXPECT_FLOAT_EQ(corner.y, 250.0F - panned.quadSize / 2.0F);
}

} // namespace
} // namespace vellum
