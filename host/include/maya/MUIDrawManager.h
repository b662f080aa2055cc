#pragma once

#include <maya/MColor.h>
#include <maya/MPoint.h>
#include <maya/MStateManager.h>
#include <maya/MStatus.h>
#include <maya/MString.h>
#include <maya/MVector.h>

namespace host {
class DrawManager;
} // namespace host

namespace MHWRender {

class MTexture;

/// Queues simple shapes, which the renderer draws later. Everything, state included, belongs
/// between beginDrawable and endDrawable. 2D positions and lengths are port pixels with the
/// origin at the bottom left; 3D positions are world space in this host's tools and object space
/// in a draw override.
class MUIDrawManager {
public:
    enum FontSize { kDefaultFontSize = 12, kSmallFontSize = 9 };
    enum TextAlignment { kLeft, kCenter, kRight };
    enum LineStyle { kSolid, kShortDotted, kShortDashed, kDashed, kDotted };
    enum PaintStyle { kFlat, kStippled, kShaded };
    enum Primitive { kPoints, kLines, kLineStrip, kClosedLine, kTriangles, kTriStrip };
    enum Selectability { kNonSelectable, kSelectable, kAutomatic };

    void beginDrawable(Selectability selectability = kAutomatic, unsigned int selectionName = 0);
    /// Resets colour, line and font; texture, sampler and mask stay as they are.
    void endDrawable();

    void setColor(const MColor& color);
    void setLineWidth(const float value);
    void setLineStyle(const LineStyle style);
    void setPointSize(const float value);
    void setFontSize(const unsigned int fontSize);
    void setFontName(const MString& faceName);

    /// The texture of what follows until the next call; null ends its use. Pixels whose alpha
    /// is below the threshold are not drawn. Fails for a texture that was released. The second
    /// argument changes nothing in this host.
    MStatus setTexture(MTexture* texture, bool = true, float alphaThreshold = 0.05f);
    /// kMinMagMipPoint or kMinMagMipLinear, kTexWrap or kTexClamp; anything else fails.
    MStatus setTextureSampler(const MSamplerState::TextureFilter filter,
                              const MSamplerState::TextureAddress address);
    /// kRGBAChannels, kRGBChannels or kAlphaChannel; anything else fails.
    MStatus setTextureMask(const MBlendState::ChannelMask mask);

    void line(const MPoint& startPoint, const MPoint& endPoint);
    void line2d(const MPoint& startPoint, const MPoint& endPoint);
    void point(const MPoint& point);
    void point2d(const MPoint& point);
    /// scaleX and scaleY are half the sides, measured across and along the up vector.
    void rect2d(const MPoint& center, const MVector& up, const double scaleX, const double scaleY,
                bool filled = false);
    void circle2d(const MPoint& center, const double radius, const bool filled = false);
    void text2d(const MPoint& position, const MString& text, TextAlignment alignment = kLeft,
                const int* backgroundSize = NULL, const MColor* backgroundColor = NULL,
                bool dynamic = false);

    static const char* className();

private:
    explicit MUIDrawManager(host::DrawManager& manager) : manager_(manager) {}
    MUIDrawManager(const MUIDrawManager&) = delete;
    MUIDrawManager& operator=(const MUIDrawManager&) = delete;

    host::DrawManager& manager_;
    friend class host::DrawManager;
};

} // namespace MHWRender
