#pragma once

#include <maya/MEvent.h>
#include <maya/MObject.h>
#include <maya/MStatus.h>
#include <maya/MString.h>

#include <memory>

class MCursor;

namespace MHWRender {
class MFrameContext;
class MUIDrawManager;
} // namespace MHWRender

namespace host {
struct ContextState;
} // namespace host

/// Base of interactive tools. The host owns the contexts that an MPxContextCommand made.
///
/// While a context is current, which toolOnSetup and toolOffCleanup bracket, it gets the left and
/// the middle mouse button in 3D views; the right button, and any button with Alt, never arrive.
/// In Viewport 2.0 the forms with a draw manager are called first, and those with the event alone
/// when they return failure; in other renderers only the latter are.
class MPxContext {
public:
    enum ImageIndex { kImage1 = 0, kImage2, kImage3 };

    MPxContext();
    virtual ~MPxContext();

    virtual void toolOnSetup(MEvent& event);
    virtual void toolOffCleanup();

    virtual MStatus doPress(MEvent& event, MHWRender::MUIDrawManager& drawMgr,
                            const MHWRender::MFrameContext& context);
    virtual MStatus doRelease(MEvent& event, MHWRender::MUIDrawManager& drawMgr,
                              const MHWRender::MFrameContext& context);
    virtual MStatus doDrag(MEvent& event, MHWRender::MUIDrawManager& drawMgr,
                           const MHWRender::MFrameContext& context);
    virtual MStatus doHold(MEvent& event, MHWRender::MUIDrawManager& drawMgr,
                           const MHWRender::MFrameContext& context);
    virtual MStatus doPtrMoved(MEvent& event, MHWRender::MUIDrawManager& drawMgr,
                               const MHWRender::MFrameContext& context);

    virtual MStatus doPress(MEvent& event);
    virtual MStatus doRelease(MEvent& event);
    virtual MStatus doDrag(MEvent& event);
    virtual MStatus doHold(MEvent& event);
    virtual MStatus doPtrMoved(MEvent& event);
    virtual MStatus doEnterRegion(MEvent& event);
    virtual MStatus doExitRegion(MEvent& event);

    /// Backspace and Delete; the base class deletes what is selected.
    virtual void deleteAction();
    virtual void completeAction(); ///< Enter
    virtual void abortAction();    ///< Escape

    virtual MStatus helpStateHasChanged(MEvent& event);

    /// Icon of the tool; a file name or a Qt resource path.
    MStatus setImage(const MString& image, ImageIndex index);
    MString image(ImageIndex index, MStatus* ReturnStatus = NULL) const;

    /// Names the context for property sheets and contextInfo.
    virtual void getClassName(MString& name) const;
    virtual MString stringClassName() const;

    static const char* className();

protected:
    MStatus setCursor(const MCursor& newCursor);
    void setTitleString(const MString& str);
    void setHelpString(const MString& str);

private:
    MPxContext(const MPxContext&) = delete;
    MPxContext& operator=(const MPxContext&) = delete;

    std::unique_ptr<host::ContextState> state_;
    friend struct host::ContextState;
};
