// Operations on the frames of a range: insert, delete, copy, cut, paste and clear.
#include "document/FrameClipboard.h"
#include "document/FrameExchange.h"
#include "document/IntTime.h"
#include "document/LayerManager.h"
#include "plugin/leaves/Report.h"

#include <limits>
#include <map>

namespace vellum {

namespace {

/// Some eleven hours of film; more is a slip of the hand that would only fill memory.
constexpr qint64 kMostInserted = 1000000;

/// Which camera was current and which before, as far as making the first layer changed that.
class CurrentCamera {
public:
    void remember(const LayerManager& document) {
        current_ = document.currentCamera();
        previous_ = document.previousCamera();
    }

    void restore(LayerManager& document) const {
        document.setCurrentCamera(previous_);
        document.setCurrentCamera(current_);
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
        if (!isPlanned() && range_.length() > kMostInserted) {
            report::error(
                QStringLiteral("Cannot insert more than %1 frames at once").arg(kMostInserted));
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
        exchange(*document.layer(address_.camera(), index));
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

std::vector<std::unique_ptr<Frame>> copies(const Layer& layer, const FrameRange& range) {
    std::vector<std::unique_ptr<Frame>> result;
    for (const Frame* frame : framesIn(layer, range)) {
        const int time = frame->intTime();
        // Of neighbours that fall together in a coarse time unit, the last is the one shown.
        if (const Frame* shown = nullptr; !result.empty()) {
            Q_UNUSED(shown);
        }
        auto copied = frame->copy();
        copied->setIntTime(static_cast<int>(static_cast<qint64>(time) - range.first));
        if (!result.empty() && result.back()->time() == copied->time()) {
            result.back() = std::move(copied);
        } else {
            result.push_back(std::move(copied));
        }
    }
    return result;
}

} // namespace
} // namespace vellum
