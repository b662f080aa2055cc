// The drawing interface of an event, at hand for the length of one call.
#pragma once

#include <maya/MUIDrawManager.h>

namespace vellum {

class DrawManagerScope {
public:
    DrawManagerScope(MHWRender::MUIDrawManager*& slot, MHWRender::MUIDrawManager& manager)
        : slot_(slot) {
        slot_ = &manager;
    }
    ~DrawManagerScope() { slot_ = nullptr; }
    DrawManagerScope(const DrawManagerScope&) = delete;
    DrawManagerScope& operator=(const DrawManagerScope&) = delete;

private:
    MHWRender::MUIDrawManager*& slot_;
};

} // namespace vellum
