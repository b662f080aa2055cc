// Operations on the frames of a range: insert, delete, copy, cut, paste and clear.
#include "document/IntTime.h"
#include "document/LayerManager.h"
#include "document/edits/FrameClipboard.h"
#include "document/edits/FrameExchange.h"
#include "plugin/base/Report.h"

#include <limits>
#include <map>

namespace vellum {

namespace {

/// Which camera was current and which before, as far as making the first layer changed that.
class CurrentCamera {
public:
    void remember(const LayerManager& document) {
        current_ = document.currentCamera();
        previous_ = document.previousCamera();
    }

    void restore(LayerManager& document) const {
        document.restoreCurrentCamera(current_, previous_);
    }

    bool differs(const LayerManager& document) const {
        return document.currentCamera() != current_;
    }

private:
    QString current_;
    QString previous_;
};

class InsertOperation : public ExchangeOperation {
public:
    InsertOperation(const QString& camera, const FrameRange& range)
        : ExchangeOperation(camera), range_(range) {}

private:
    QString lockedMessage() const override {
        return QStringLiteral("Cannot add frames to a locked layer");
    }

    bool apply(LayerManager& document, FrameClipboard& clipboard) override {
        if (!isPlanned() && !range_.canBeFilled()) {
            return false;
        }
        if (layer_) {
            return insertLayerAgain(document);
        }
        if (!isPlanned() && document.cameraLayerCount(address_.camera()) == 0) {
            return addLayer(document);
        }
        return ExchangeOperation::apply(document, clipboard);
    }

    bool revert(LayerManager& document) override {
        return layerCreated_ ? takeLayer(document) : ExchangeOperation::revert(document);
    }

    bool plan(const Layer& layer, const FrameClipboard&) override {
        for (qint64 time = range_.first; time <= range_.last; ++time) {
            if (!layer.hasFrameAtIntTime(static_cast<int>(time))) {
                put(std::make_unique<Frame>(fromIntTime(static_cast<int>(time))));
            }
        }
        return true;
    }

    bool addLayer(LayerManager& document) {
        if (!address_.requireCamera()) {
            return false;
        }
        before_.remember(document);
        const LayerManager::ChangeGroup group(document);
        const int index = document.addLayer(address_.camera(), -1, QString());
        if (index < 0) {
            report::error(QStringLiteral("Failed to create layer for frame"));
            return false;
        }
        plan(*document.layer(address_.camera(), index), {});
        exchange(document, index);
        address_.bind(document, index);
        layerCreated_ = true;
        return true;
    }

    bool takeLayer(LayerManager& document) {
        if (!address_.resolve(document)) {
            return false;
        }
        const LayerManager::ChangeGroup group(document);
        layer_ = document.takeLayer(address_.camera(), address_.index(document));
        // Only a camera that became current by getting this layer stops being it.
        if (before_.differs(document) && document.currentCamera() == address_.camera()) {
            before_.restore(document);
        }
        return true;
    }

    bool insertLayerAgain(LayerManager& document) {
        if (!address_.requireCamera()) {
            return false;
        }
        if (document.cameraLayerCount(address_.camera()) > 0) {
            report::error(QStringLiteral("Failed to create layer for frame"));
            return false;
        }
        before_.remember(document);
        const LayerManager::ChangeGroup group(document);
        layer_->setName(document.uniqueLayerName(layer_->name()));
        const int index = document.insertLayer(address_.camera(), -1, std::move(layer_));
        address_.bind(document, index);
        return true;
    }

    FrameRange range_;
    CurrentCamera before_;
    bool layerCreated_ = false;
    std::unique_ptr<Layer> layer_; ///< the layer created, with its frames, while undone
};

class RemoveOperation : public ExchangeOperation {
public:
    RemoveOperation(const QString& camera, const FrameRange& range)
        : ExchangeOperation(camera), range_(range) {}

protected:
    QString lockedMessage() const override {
        return QStringLiteral("Cannot remove frames from a locked layer");
    }

    bool plan(const Layer& layer, const FrameClipboard&) override {
        for (const Frame* frame : framesIn(layer, range_)) {
            take(*frame);
        }
        return true;
    }

    const FrameRange& range() const { return range_; }

private:
    FrameRange range_;
};

class ClearOperation : public RemoveOperation {
public:
    using RemoveOperation::RemoveOperation;

private:
    bool plan(const Layer& layer, const FrameClipboard& clipboard) override {
        for (const Frame* frame : framesIn(layer, range())) {
            put(std::make_unique<Frame>(frame->time()));
        }
        return RemoveOperation::plan(layer, clipboard);
    }
};

using Copies = std::vector<std::unique_ptr<Frame>>;

/// Packed copies whose times count from the start of the range. Empty after reporting when those
/// times do not fit.
std::optional<Copies> copyFrames(const Layer& layer, const FrameRange& range) {
    Copies copies;
    for (const Frame* frame : framesIn(layer, range)) {
        const qint64 time = static_cast<qint64>(frame->intTime()) - range.first;
        if (time > std::numeric_limits<int>::max()) {
            report::error(QStringLiteral("Time range is too long to be copied"));
            return std::nullopt;
        }
        auto copy = frame->copy();
        copy->setIntTime(static_cast<int>(time));
        // Of neighbours that fall together in a coarse time unit, the last is the one shown.
        if (!copies.empty() && copies.back()->time() == copy->time()) {
            copies.pop_back();
        }
        copies.push_back(std::move(copy));
    }
    return copies;
}

class CutOperation : public RemoveOperation {
public:
    using RemoveOperation::RemoveOperation;

private:
    QString lockedMessage() const override {
        return QStringLiteral("Cannot cut frames from a locked layer");
    }

    bool apply(LayerManager& document, FrameClipboard& clipboard) override {
        const Layer* layer = address_.resolve(document);
        if (!layer || refuseLocked(*layer)) {
            return false;
        }
        if (!isPlanned()) {
            auto copies = copyFrames(*layer, range());
            if (!copies) {
                return false;
            }
            copies_ = std::move(*copies);
        }
        if (!RemoveOperation::apply(document, clipboard)) {
            return false;
        }
        // Redo finds the frames again by moment, so it copies what it copied first.
        Copies copies;
        for (const auto& copied : copies_) {
            copies.push_back(copied->copy());
        }
        clipboard.replace(std::move(copies));
        return true;
    }

    Copies copies_; ///< share their bytes with the clipboard
};

class CopyOperation : public FrameOperation {
public:
    CopyOperation(const QString& camera, const FrameRange& range)
        : address_(camera), range_(range) {}

    bool isUndoable() const override { return false; }
    bool changesDrawing() const override { return false; }

private:
    bool apply(LayerManager& document, FrameClipboard& clipboard) override {
        const Layer* layer = address_.resolve(document);
        auto copies = layer ? copyFrames(*layer, range_) : std::nullopt;
        if (!copies) {
            return false;
        }
        clipboard.replace(std::move(*copies));
        return true;
    }

    bool revert(LayerManager&) override { return false; }

    LayerAddress address_;
    FrameRange range_;
};

class PasteOperation : public ExchangeOperation {
public:
    PasteOperation(const QString& camera, int start) : ExchangeOperation(camera), start_(start) {}

private:
    QString lockedMessage() const override {
        return QStringLiteral("Cannot paste frames to a locked layer");
    }

    bool plan(const Layer& layer, const FrameClipboard& clipboard) override {
        // The time unit may be coarser than it was at copying: of frames that fall together now,
        // the last is the one that would be seen.
        std::map<int, const Frame*> pasted;
        for (const auto& frame : clipboard.frames()) {
            const qint64 time = static_cast<qint64>(frame->intTime()) + start_;
            if (time > std::numeric_limits<int>::max()) {
                report::error(QStringLiteral("Cannot paste frames at time %1").arg(time));
                return false;
            }
            pasted[static_cast<int>(time)] = frame.get();
        }
        for (const auto& [time, frame] : pasted) {
            for (const Frame* displaced : framesIn(layer, {time, time})) {
                take(*displaced);
            }
            auto copy = frame->copy();
            copy->setIntTime(time);
            put(std::move(copy));
        }
        return true;
    }

    int start_;
};

} // namespace

namespace frame_operation {

Operation insert(const QString& camera, const FrameRange& range) {
    return std::make_unique<InsertOperation>(camera, range);
}

Operation remove(const QString& camera, const FrameRange& range) {
    return std::make_unique<RemoveOperation>(camera, range);
}

Operation cut(const QString& camera, const FrameRange& range) {
    return std::make_unique<CutOperation>(camera, range);
}

Operation copy(const QString& camera, const FrameRange& range) {
    return std::make_unique<CopyOperation>(camera, range);
}

Operation paste(const QString& camera, int start) {
    return std::make_unique<PasteOperation>(camera, start);
}

Operation clear(const QString& camera, const FrameRange& range) {
    return std::make_unique<ClearOperation>(camera, range);
}

} // namespace frame_operation

} // namespace vellum
