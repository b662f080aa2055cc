#include "document/edits/InsertFrames.h"

#include "document/IntTime.h"
#include "document/LayerManager.h"
#include "plugin/base/Report.h"

namespace vellum {

QString InsertFrames::lockedMessage() const {
    return QStringLiteral("Cannot add frames to a locked layer");
}

bool InsertFrames::plan(const Layer& layer) {
    for (qint64 time = range_.first; time <= range_.last; ++time) {
        if (!layer.hasFrameAtIntTime(static_cast<int>(time)))
            put(std::make_unique<Frame>(fromIntTime(static_cast<int>(time))));
    }
    return true;
}

bool InsertFrames::doExecute(LayerManager& document) {
    if (!range_.canBeFilled())
        return false;
    return document.cameraLayerCount(address_.camera()) == 0 ? addFirstLayer(document)
                                                             : FrameExchange::doExecute(document);
}

bool InsertFrames::addFirstLayer(LayerManager& document) {
    if (!address_.requireCamera())
        return false;
    if (!added_.addLayer(document, -1)) {
        report::error(QStringLiteral("Failed to create layer for frame"));
        return false;
    }
    address_.bind(document, added_.layerIndex(document));
    return plan(*document.layer(address_.camera(), added_.layerIndex(document))) &&
           exchange(document);
}

bool InsertFrames::doUndo(LayerManager& document) {
    if (!added_.hasLayer())
        return FrameExchange::doUndo(document);
    if (!address_.resolve(document))
        return false;
    added_.takeBack(document);
    return true;
}

bool InsertFrames::doRedo(LayerManager& document) {
    if (!added_.hasLayer())
        return FrameExchange::doRedo(document);
    if (!address_.requireCamera())
        return false;
    if (document.cameraLayerCount(address_.camera()) > 0) {
        report::error(QStringLiteral("Failed to create layer for frame"));
        return false;
    }
    return added_.putAgain(document);
}

} // namespace vellum
