#include "ui/ContextState.h"
#include "ui/Tools.h"

#include <maya/MCursor.h>
#include <maya/MGlobal.h>
#include <maya/MPxContext.h>

MPxContext::MPxContext() : state_(std::make_unique<host::ContextState>()) {
}
MPxContext::~MPxContext() = default;

void MPxContext::toolOnSetup(MEvent&) {
}
void MPxContext::toolOffCleanup() {
}

// The forms for Viewport 2.0 fail so that the plain ones get the event.
MStatus MPxContext::doPress(MEvent&, MHWRender::MUIDrawManager&, const MHWRender::MFrameContext&) {
    return MStatus::kFailure;
}

MStatus MPxContext::doRelease(MEvent&, MHWRender::MUIDrawManager&,
                              const MHWRender::MFrameContext&) {
    return MStatus::kFailure;
}

MStatus MPxContext::doDrag(MEvent&, MHWRender::MUIDrawManager&, const MHWRender::MFrameContext&) {
    return MStatus::kFailure;
}

MStatus MPxContext::doHold(MEvent&, MHWRender::MUIDrawManager&, const MHWRender::MFrameContext&) {
    return MStatus::kFailure;
}

MStatus MPxContext::doPtrMoved(MEvent&, MHWRender::MUIDrawManager&,
                               const MHWRender::MFrameContext&) {
    return MStatus::kFailure;
}

MStatus MPxContext::doPress(MEvent&) {
    return MStatus::kSuccess;
}

MStatus MPxContext::doRelease(MEvent&) {
    return MStatus::kSuccess;
}

MStatus MPxContext::doDrag(MEvent&) {
    return MStatus::kSuccess;
}

MStatus MPxContext::doHold(MEvent&) {
    return MStatus::kSuccess;
}

MStatus MPxContext::doPtrMoved(MEvent&) {
    return MStatus::kSuccess;
}

MStatus MPxContext::doEnterRegion(MEvent&) {
    return MStatus::kSuccess;
}

MStatus MPxContext::doExitRegion(MEvent&) {
    return MStatus::kSuccess;
}

void MPxContext::deleteAction() {
    MGlobal::executeCommand("delete", false, true);
}

void MPxContext::completeAction() {
}
void MPxContext::abortAction() {
}

MStatus MPxContext::helpStateHasChanged(MEvent&) {
    return MStatus::kSuccess;
}

MStatus MPxContext::setImage(const MString& image, ImageIndex index) {
    if (index < kImage1 || index > kImage3)
        return MStatus::kInvalidParameter;
    state_->images[index] = image.asUTF8();
    host::Tools::instance().changed(this);
    return MStatus::kSuccess;
}

MString MPxContext::image(ImageIndex index, MStatus* ReturnStatus) const {
    const bool valid = index >= kImage1 && index <= kImage3;
    if (ReturnStatus)
        *ReturnStatus = valid ? MStatus::kSuccess : MStatus::kInvalidParameter;
    MString result;
    if (valid)
        result.setUTF8(state_->images[index].c_str());
    return result;
}

void MPxContext::getClassName(MString& name) const {
    name = stringClassName();
}

MString MPxContext::stringClassName() const {
    return MString();
}

const char* MPxContext::className() {
    return "MPxContext";
}

MStatus MPxContext::setCursor(const MCursor& newCursor) {
    state_->cursor = newCursor;
    host::Tools::instance().changed(this);
    return MStatus::kSuccess;
}

void MPxContext::setTitleString(const MString& str) {
    state_->title = str.asUTF8();
    host::Tools::instance().changed(this);
}

void MPxContext::setHelpString(const MString& str) {
    state_->help = str.asUTF8();
    host::Tools::instance().changed(this);
}
