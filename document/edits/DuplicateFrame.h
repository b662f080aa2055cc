// Copies the last drawing before the current time to it.
#pragma once

#include "document/edits/FrameExchange.h"

namespace vellum {

class DuplicateFrame : public FrameExchange {
public:
    explicit DuplicateFrame(const QString& camera) : FrameExchange(camera) {}

private:
    bool plan(const Layer& layer) override;
    QString lockedMessage() const override;
    QString undoFailedMessage() const override;
};

} // namespace vellum
