#pragma once

#include <maya/MFrameContext.h>

namespace MHWRender {

/// The frame as the draw callback of an override sees it.
class MDrawContext : public MFrameContext {
public:
    ~MDrawContext() override;

    static const char* className();

private:
    explicit MDrawContext(std::shared_ptr<const host::Frame> frame);
    friend class host::FrameAccess;
};

} // namespace MHWRender
