#include "render/DrawManager.h"

#include "foundation/Report.h"
#include "render/TextureStore.h"

#include <maya/MMatrix.h>

#include <algorithm>
#include <cmath>

namespace host {

namespace {
QString qt(const MString& text) {
    return QString::fromUtf8(text.asUTF8());
}

void setFourth(float (&to)[4], const MColor& color) {
    to[0] = color.r;
    to[1] = color.g;
    to[2] = color.b;
    to[3] = color.a;
}
} // namespace

DrawManager::DrawManager(std::string owner, const MMatrix* objectToWorld)
    : owner_(std::move(owner)),
      objectToWorld_(objectToWorld ? std::make_unique<MMatrix>(*objectToWorld) : nullptr),
      api_(*this) {
    resetState();
}

DrawManager::~DrawManager() = default;

DrawList DrawManager::take() {
    if (inDrawable_) {
        fail("beginDrawable without endDrawable");
        inDrawable_ = false;
        resetState();
    }
    DrawList items;
    items.swap(items_);
    return items;
}

void DrawManager::resetState() {
    const DrawItem fresh;
    std::copy(std::begin(fresh.color), std::end(fresh.color), std::begin(state_.color));
    state_.lineWidth = fresh.lineWidth;
    state_.lineStyle = fresh.lineStyle;
    state_.pointSize = fresh.pointSize;
    state_.font = QFont(QStringLiteral("Helvetica"));
    state_.font.setPixelSize(MHWRender::MUIDrawManager::kDefaultFontSize);
}

void DrawManager::fail(const std::string& what) const {
    report::error(owner_ + ": " + what);
}

bool DrawManager::open(const char* call) {
    if (!inDrawable_)
        fail(std::string("MUIDrawManager::") + call + " outside beginDrawable and endDrawable");
    return inDrawable_;
}

DrawItem DrawManager::item(DrawItem::Shape shape, bool inWorld) const {
    DrawItem item = state_;
    item.shape = shape;
    item.inWorld = inWorld;
    return item;
}

MPoint DrawManager::toWorld(const MPoint& point) const {
    return objectToWorld_ ? point * *objectToWorld_ : point;
}

} // namespace host

namespace MHWRender {

using host::DrawItem;

void MUIDrawManager::beginDrawable(Selectability, unsigned int) {
    if (manager_.inDrawable_)
        manager_.fail("beginDrawable inside a drawable");
    manager_.inDrawable_ = true;
    manager_.resetState();
}

void MUIDrawManager::endDrawable() {
    if (!manager_.open("endDrawable"))
        return;
    manager_.inDrawable_ = false;
    manager_.resetState();
}

void MUIDrawManager::setColor(const MColor& color) {
    if (manager_.open("setColor"))
        host::setFourth(manager_.state_.color, color);
}

void MUIDrawManager::setLineWidth(const float value) {
    if (manager_.open("setLineWidth"))
        manager_.state_.lineWidth = value;
}

void MUIDrawManager::setLineStyle(const LineStyle style) {
    if (manager_.open("setLineStyle"))
        manager_.state_.lineStyle = style;
}

void MUIDrawManager::setPointSize(const float value) {
    if (manager_.open("setPointSize"))
        manager_.state_.pointSize = value;
}

void MUIDrawManager::setFontSize(const unsigned int fontSize) {
    if (manager_.open("setFontSize"))
        manager_.state_.font.setPixelSize(fontSize > 0 ? int(fontSize) : 1);
}

void MUIDrawManager::setFontName(const MString& faceName) {
    if (manager_.open("setFontName"))
        manager_.state_.font.setFamily(host::qt(faceName));
}

MStatus MUIDrawManager::setTexture(MTexture* texture, bool, float alphaThreshold) {
    if (!manager_.open("setTexture"))
        return MS::kFailure;
    if (!texture) {
        manager_.state_.image.reset();
        return MS::kSuccess;
    }
    std::shared_ptr<host::GlTexture> known = host::TextureStore::instance().find(texture);
    if (!known) {
        manager_.fail("setTexture with a texture that was released");
        return MS::kInvalidParameter;
    }
    manager_.state_.image = std::move(known);
    manager_.state_.alphaThreshold = alphaThreshold;
    return MS::kSuccess;
}

MStatus MUIDrawManager::setTextureSampler(const MSamplerState::TextureFilter filter,
                                          const MSamplerState::TextureAddress address) {
    if (!manager_.open("setTextureSampler"))
        return MS::kFailure;
    const bool filterKnown =
        filter == MSamplerState::kMinMagMipPoint || filter == MSamplerState::kMinMagMipLinear;
    const bool addressKnown =
        address == MSamplerState::kTexWrap || address == MSamplerState::kTexClamp;
    if (!filterKnown || !addressKnown) {
        manager_.fail("setTextureSampler takes kMinMagMipPoint or kMinMagMipLinear with kTexWrap "
                      "or kTexClamp only");
        return MS::kInvalidParameter;
    }
    manager_.state_.filter = filter;
    manager_.state_.address = address;
    return MS::kSuccess;
}

MStatus MUIDrawManager::setTextureMask(const MBlendState::ChannelMask mask) {
    if (!manager_.open("setTextureMask"))
        return MS::kFailure;
    if (mask != MBlendState::kRGBAChannels && mask != MBlendState::kRGBChannels &&
        mask != MBlendState::kAlphaChannel) {
        manager_.fail("setTextureMask takes kRGBAChannels, kRGBChannels or kAlphaChannel only");
        return MS::kInvalidParameter;
    }
    manager_.state_.mask = mask;
    return MS::kSuccess;
}

void MUIDrawManager::line(const MPoint& startPoint, const MPoint& endPoint) {
    if (!manager_.open("line"))
        return;
    DrawItem item = manager_.item(DrawItem::Shape::Lines, true);
    item.points = {manager_.toWorld(startPoint), manager_.toWorld(endPoint)};
    manager_.items_.push_back(std::move(item));
}

void MUIDrawManager::line2d(const MPoint& startPoint, const MPoint& endPoint) {
    if (!manager_.open("line2d"))
        return;
    DrawItem item = manager_.item(DrawItem::Shape::Lines, false);
    item.points = {startPoint, endPoint};
    manager_.items_.push_back(std::move(item));
}

void MUIDrawManager::point(const MPoint& position) {
    if (!manager_.open("point"))
        return;
    DrawItem item = manager_.item(DrawItem::Shape::Points, true);
    item.points = {manager_.toWorld(position)};
    manager_.items_.push_back(std::move(item));
}

void MUIDrawManager::point2d(const MPoint& position) {
    if (!manager_.open("point2d"))
        return;
    DrawItem item = manager_.item(DrawItem::Shape::Points, false);
    item.points = {position};
    manager_.items_.push_back(std::move(item));
}

void MUIDrawManager::rect2d(const MPoint& center, const MVector& up, const double scaleX,
                            const double scaleY, bool filled) {
    if (!manager_.open("rect2d"))
        return;
    const double length = std::hypot(up.x, up.y);
    if (length == 0) {
        manager_.fail("rect2d with an up vector of no length");
        return;
    }
    const double ux = up.x / length;
    const double uy = up.y / length;
    const auto corner = [&](double across, double along) {
        return MPoint(center.x + across * scaleX * uy + along * scaleY * ux,
                      center.y - across * scaleX * ux + along * scaleY * uy);
    };
    DrawItem item =
        manager_.item(filled ? DrawItem::Shape::Polygon : DrawItem::Shape::ClosedLine, false);
    item.points = {corner(-1, -1), corner(1, -1), corner(1, 1), corner(-1, 1)};
    if (filled && item.image)
        item.texture = {{0, 1}, {1, 1}, {1, 0}, {0, 0}};
    manager_.items_.push_back(std::move(item));
}

void MUIDrawManager::circle2d(const MPoint& center, const double radius, const bool filled) {
    if (!manager_.open("circle2d"))
        return;
    // Sides short enough to look round: about three pixels each.
    const int sides = std::max(24, std::min(720, int(radius * 2)));
    constexpr double turn = 6.283185307179586;
    DrawItem item =
        manager_.item(filled ? DrawItem::Shape::Polygon : DrawItem::Shape::ClosedLine, false);
    item.image.reset();
    item.points.reserve(std::size_t(sides));
    for (int i = 0; i < sides; ++i)
        item.points.emplace_back(center.x + radius * std::cos(turn * i / sides),
                                 center.y + radius * std::sin(turn * i / sides));
    manager_.items_.push_back(std::move(item));
}

void MUIDrawManager::text2d(const MPoint& position, const MString& text, TextAlignment alignment,
                            const int* backgroundSize, const MColor* backgroundColor, bool) {
    if (!manager_.open("text2d"))
        return;
    DrawItem item = manager_.item(DrawItem::Shape::Text, false);
    item.image.reset();
    item.points = {position};
    item.text = host::qt(text);
    item.alignment = alignment;
    if (backgroundSize) {
        item.backgroundWidth = backgroundSize[0];
        item.backgroundHeight = backgroundSize[1];
        if (backgroundColor)
            host::setFourth(item.background, *backgroundColor);
    }
    manager_.items_.push_back(std::move(item));
}

const char* MUIDrawManager::className() {
    return "MUIDrawManager";
}

} // namespace MHWRender
