// Operations that move frames or the scene in time: duplicate, steps, move and retime.
#include "document/IntTime.h"
#include "document/LayerManager.h"
#include "document/Retiming.h"
#include "document/edits/FrameExchange.h"
#include "plugin/base/Report.h"

#include <limits>
#include <maya/MAnimControl.h>
#include <optional>
#include <utility>

namespace vellum {

namespace {

/// Whether a time, in frames, has a whole frame.
template <typename Number> bool fits(Number time) {
    using Limits = std::numeric_limits<int>;
    return time > static_cast<Number>(Limits::min()) - 1 &&
           time < static_cast<Number>(Limits::max()) + 1;
}

/// The document follows at once, whoever else listens to the scene's time.
void goTo(LayerManager& document, const MTime& time) {
    MAnimControl::setCurrentTime(time);
    document.timeChanged(currentIntTime());
}

class DuplicateOperation : public ExchangeOperation {
public:
    explicit DuplicateOperation(const QString& camera) : ExchangeOperation(camera) {}

private:
    QString lockedMessage() const override {
        return QStringLiteral("Cannot duplicate frames on a locked layer");
    }

    QString undoFailedMessage() const override {
        return QStringLiteral("Failed to undo duplicate frame operation.");
    }

    bool plan(const Layer& layer, const FrameClipboard&) override {
        if (layer.hasFrameAtCurrentTime()) {
            report::error(QStringLiteral("A frame already exists at the current time."));
            return false;
        }
        const Frame* previous = layer.previousFrame(false);
        if (!previous) {
            return false;
        }
        const MTime now = MAnimControl::currentTime();
        if (!fits(now.asUnits(MTime::uiUnit()))) {
            report::error(QStringLiteral("The current time is out of bounds"));
            return false;
        }
        auto copy = previous->copy();
        copy->setTime(now);
        put(std::move(copy));
        return true;
    }
};

class StepOperation : public FrameOperation {
public:
    explicit StepOperation(bool forward) : forward_(forward) {}

    bool changesDrawing() const override { return false; }

private:
    bool apply(LayerManager& document, FrameClipboard&) override {
        if (!planned_) {
            const QString& camera = document.currentCamera();
            const Frame* frame =
                forward_ ? document.nextFrame(camera, true) : document.previousFrame(camera, true);
            if (frame && frame->intTime() != currentIntTime()) {
                target_ = frame->time();
            }
            planned_ = target_ || !forward_;
        }
        if (target_) {
            before_ = MAnimControl::currentTime();
            goTo(document, *target_);
        }
        return planned_;
    }

    bool revert(LayerManager& document) override {
        if (target_) {
            goTo(document, before_);
        }
        return true;
    }

    bool forward_;
    bool planned_ = false;
    std::optional<MTime> target_; ///< empty: nowhere to go
    MTime before_;
};

/// Operations that give frames other times. The record is both times of each frame.
class ShiftOperation : public FrameOperation {
protected:
    explicit ShiftOperation(const QString& camera) : address_(camera) {}

    /// First execution: the shifts. Empty after reporting a refusal.
    virtual std::optional<std::vector<Layer::Shift>> plan(const Layer& layer) = 0;
    virtual QString lockedMessage() const = 0;

    bool apply(LayerManager& document, FrameClipboard&) override {
        const Layer* layer = address_.resolve(document);
        if (!layer) {
            return false;
        }
        if (layer->state() == layer_state::kLocked) {
            report::error(lockedMessage());
            return false;
        }
        auto shifts = address_.isBound() ? std::optional(shifts_) : plan(*layer);
        if (!shifts || !shift(document, *shifts)) {
            return false;
        }
        shifts_ = std::move(*shifts);
        address_.bind(document, address_.index(document));
        return true;
    }

    bool revert(LayerManager& document) override {
        std::vector<Layer::Shift> back = shifts_;
        for (Layer::Shift& one : back) {
            std::swap(one.from, one.to);
        }
        return address_.resolve(document) && shift(document, back);
    }

    LayerAddress address_;

private:
    bool shift(LayerManager& document, const std::vector<Layer::Shift>& shifts) const {
        if (!document.shiftFrames(address_.camera(), address_.index(document), shifts)) {
            report::error(QStringLiteral("The frames of the layer have changed since."));
            return false;
        }
        return true;
    }

    std::vector<Layer::Shift> shifts_;
};

class MoveOperation : public ShiftOperation {
public:
    MoveOperation(const QString& camera, int offset, int first, int last)
        : ShiftOperation(camera), offset_(offset), first_(first), last_(last) {}

private:
    QString lockedMessage() const override {
        return QStringLiteral("Cannot move frames on a locked layer");
    }

    static std::nullopt_t refuse(const QString& message) {
        report::error(message);
        return std::nullopt;
    }

    std::optional<std::vector<Layer::Shift>> plan(const Layer& layer) override {
        if (offset_ == 0) {
            return refuse(QStringLiteral("Move Failed. The offset is 0"));
        }
        if (first_ > last_) {
            return refuse(
                QStringLiteral("Move Failed. The range is empty: %1 to %2").arg(first_).arg(last_));
        }
        std::vector<Layer::Shift> shifts;
        std::optional<qint64> latest;
        for (const Frame* frame : framesIn(layer, {first_, last_})) {
            const qint64 target = static_cast<qint64>(frame->intTime()) + offset_;
            if (!fits(target)) {
                return refuse(QStringLiteral("Move Failed. Time %1 is out of bounds").arg(target));
            }
            // Frames that fell together in a coarse time unit would meet at their new time.
            if (layer.hasFrameAtIntTime(static_cast<int>(target)) || latest == target) {
                return refuse(
                    QStringLiteral("Move Failed. A frame already exists at time %1").arg(target));
            }
            latest = target;
            shifts.push_back({frame->time(), fromIntTime(static_cast<int>(target))});
        }
        return shifts;
    }

    int offset_;
    int first_;
    int last_;
};

class RetimeOperation : public ShiftOperation {
public:
    RetimeOperation(const FrameRange& range, int count, bool relative, bool moveToNext)
        : ShiftOperation({}), range_(range), gap_{count, relative}, moveToNext_(moveToNext) {}

private:
    QString lockedMessage() const override {
        return QStringLiteral("Cannot retime frames on a locked layer");
    }

    std::optional<std::vector<Layer::Shift>> plan(const Layer& layer) override {
        const QList<int> times = layer.frameTimes();
        if (times.isEmpty()) {
            report::error(QStringLiteral("There are no frames to retime"));
            return std::nullopt;
        }
        const RetimeSpan span = retimeSpan(times, range_);
        const auto result = retimed(times, span, gap_);
        std::vector<Layer::Shift> shifts;
        for (int i = 0; i < times.size(); ++i) {
            const qint64 time = result[static_cast<std::size_t>(i)];
            if (!fits(time)) {
                report::error(QStringLiteral("Retime Failed. Time %1 is out of bounds").arg(time));
                return std::nullopt;
            }
            // Frames that stay keep their exact moment, which need not be a whole frame now.
            if (time != times[i]) {
                shifts.push_back({layer.frameAt(i)->time(), fromIntTime(static_cast<int>(time))});
            }
        }
        const int shown = frameToShow(times, span, moveToNext_);
        target_ = result[static_cast<std::size_t>(shown)] == times[shown]
                      ? layer.frameAt(shown)->time()
                      : fromIntTime(static_cast<int>(result[static_cast<std::size_t>(shown)]));
        return shifts;
    }

    bool apply(LayerManager& document, FrameClipboard& clipboard) override {
        if (!address_.isBound()) {
            address_ = LayerAddress(document.currentCamera());
        }
        if (!ShiftOperation::apply(document, clipboard)) {
            return false;
        }
        before_ = MAnimControl::currentTime();
        goTo(document, target_);
        return true;
    }

    bool revert(LayerManager& document) override {
        if (!ShiftOperation::revert(document)) {
            return false;
        }
        goTo(document, before_);
        return true;
    }

    FrameRange range_;
    RetimeGap gap_;
    bool moveToNext_;
    MTime target_;
    MTime before_;
};

} // namespace

namespace frame_operation {

Operation duplicate(const QString& camera) {
    return std::make_unique<DuplicateOperation>(camera);
}

Operation stepForward() {
    return std::make_unique<StepOperation>(true);
}

Operation stepBack() {
    return std::make_unique<StepOperation>(false);
}

Operation move(const QString& camera, int offset, int first, int last) {
    return std::make_unique<MoveOperation>(camera, offset, first, last);
}

Operation retime(const FrameRange& range, int count, bool relative, bool moveToNext) {
    return std::make_unique<RetimeOperation>(range, count, relative, moveToNext);
}

} // namespace frame_operation

} // namespace vellum
