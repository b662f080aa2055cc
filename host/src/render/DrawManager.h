#pragma once

#include <QColor>
#include <QFont>
#include <QPointF>
#include <QString>

#include <maya/MUIDrawManager.h>

#include <memory>
#include <string>
#include <vector>

namespace host {

class GlTexture;
struct Frame;

/// One queued shape with all the state it is drawn with.
struct DrawItem {
    enum class Shape { Lines, Points, Polygon, ClosedLine, Text };

    Shape shape = Shape::Lines;
    bool inWorld = false;       ///< Points are world space instead of port pixels.
    std::vector<MPoint> points; ///< Polygons are convex, counter-clockwise.
    std::vector<QPointF>
        texture; ///< For each point (0, 0) top left to (1, 1) bottom right; or none.

    float color[4] = {0.7f, 0.7f, 0.7f, 1.0f};
    float lineWidth = 1;
    float pointSize = 1;
    MHWRender::MUIDrawManager::LineStyle lineStyle = MHWRender::MUIDrawManager::kSolid;

    std::shared_ptr<GlTexture> image; ///< Null: plain colour.
    float alphaThreshold = 0;         ///< Pixels of a smaller alpha are not drawn.
    MHWRender::MSamplerState::TextureFilter filter = MHWRender::MSamplerState::kMinMagMipPoint;
    MHWRender::MSamplerState::TextureAddress address = MHWRender::MSamplerState::kTexWrap;
    MHWRender::MBlendState::ChannelMask mask = MHWRender::MBlendState::kRGBAChannels;

    QString text;
    QFont font;
    MHWRender::MUIDrawManager::TextAlignment alignment = MHWRender::MUIDrawManager::kLeft;
    int backgroundWidth = 0, backgroundHeight = 0; ///< 0: as large as the text, no background.
    float background[4] = {0, 0, 0, 0};
};

using DrawList = std::vector<DrawItem>;

/// Collects what is drawn through one MUIDrawManager. A call out of place is reported as an error
/// naming the owner, and draws nothing.
class DrawManager {
public:
    /// objectToWorld applies to the 3D calls.
    explicit DrawManager(std::string owner, const MMatrix* objectToWorld = nullptr);
    ~DrawManager();

    MHWRender::MUIDrawManager& api() { return api_; }

    /// What was queued so far. A drawable still open is an error; what it queued is kept.
    DrawList take();

private:
    friend class MHWRender::MUIDrawManager;

    bool open(const char* call);
    DrawItem item(DrawItem::Shape shape, bool inWorld) const;
    MPoint toWorld(const MPoint& point) const;
    void resetState();
    void fail(const std::string& what) const;

    std::string owner_;
    std::unique_ptr<MMatrix> objectToWorld_;
    DrawItem state_;
    bool inDrawable_ = false;
    DrawList items_;
    MHWRender::MUIDrawManager api_;
};

/// Draws the list in the current context, over the port of the frame, without a depth test for
/// items in pixels.
void drawItems(const DrawList& items, const Frame& frame);

} // namespace host
