#include "node/GateFit.h"

#include <cmath>

namespace vellum {

namespace {

constexpr float kSmallestZoom = 0.001F;
constexpr double kLargestSide = 1.0e9; // keeps the whole-pixel side within int

/// How far the gate of a perspective camera is narrower than the port, for the fits that fill it.
double fillCorrection(const GateFitInput& input, double portAspect) {
    if (input.cameraAspect <= portAspect)
        return input.renderAspect < input.cameraAspect ? input.renderAspect / input.cameraAspect
                                                       : 1.0;
    return input.renderAspect <= input.cameraAspect ? input.renderAspect / portAspect
                                                    : input.cameraAspect / portAspect;
}

double fittedSide(const GateFitInput& input) {
    const double byWidth = input.portWidth / input.overscan;
    const double byHeight = input.portHeight / input.overscan;
    const double correction =
        input.orthographic
            ? 1.0
            : fillCorrection(input, static_cast<double>(input.portWidth) / input.portHeight);
    switch (input.filmFit) {
    case FilmFit::Fill:
        return byWidth * correction;
    case FilmFit::Vertical:
        return byHeight * input.renderAspect;
    case FilmFit::Overscan:
        return byHeight / correction * input.renderAspect;
    case FilmFit::Horizontal:
        break;
    }
    return byWidth;
}

} // namespace

GateFit fitToGate(const GateFitInput& input) {
    GateFit fit;
    fit.portWidth = input.portWidth;
    fit.portHeight = input.portHeight;
    const double side = input.portWidth > 0 && input.portHeight > 0 ? fittedSide(input) : 0.0;
    fit.size = std::isfinite(side) && std::abs(side) < kLargestSide ? static_cast<int>(side) : 0;
    fit.halfSize = static_cast<float>(fit.size) * 0.5F;
    fit.quadSize = static_cast<float>(fit.size);
    fit.originX = static_cast<float>(input.portWidth) * 0.5F;
    fit.originY = static_cast<float>(input.portHeight) * 0.5F;
    fit.pan = input.panZoom;
    if (input.panZoom) {
        float zoom = static_cast<float>(input.zoom);
        if (!(zoom > 0.0F))
            zoom = kSmallestZoom;
        fit.halfSize /= zoom;
        fit.quadSize /= zoom;
    }
    return fit;
}

void compensatePan(GateFit& fit, double x, double y) {
    if (!fit.pan)
        return;
    fit.panOffsetX = fit.originX - x;
    fit.panOffsetY = fit.originY - y;
    fit.originX = x;
    fit.originY = y;
}

QuadCorner lowerLeftCorner(const GateFit& fit) {
    return {(static_cast<float>(fit.portWidth) - fit.quadSize) * 0.5F -
                static_cast<float>(fit.panOffsetX),
            (static_cast<float>(fit.portHeight) - fit.quadSize) * 0.5F -
                static_cast<float>(fit.panOffsetY)};
}

ViewMapping viewMappingOf(const GateFit& fit) {
    return {fit.portWidth, fit.portHeight, fit.panOffsetX, fit.panOffsetY,
            static_cast<double>(fit.quadSize)};
}

} // namespace vellum
