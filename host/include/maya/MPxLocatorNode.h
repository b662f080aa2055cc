#pragma once

#include <maya/M3dView.h>
#include <maya/MBoundingBox.h>
#include <maya/MPxNode.h>

class MDagPath;

/// Base of locators. The legacy viewport calls draw() with a compatibility OpenGL context.
class MPxLocatorNode : public MPxNode {
public:
    MPxLocatorNode();
    ~MPxLocatorNode() override;

    MPxNode::Type type() const override;

    virtual void draw(M3dView& view, const MDagPath& path, M3dView::DisplayStyle style,
                      M3dView::DisplayStatus status);
    virtual bool isBounded() const;
    virtual MBoundingBox boundingBox() const;
    virtual bool excludeAsLocator() const;
    virtual bool isTransparent() const;
    virtual bool drawLast() const;
};
