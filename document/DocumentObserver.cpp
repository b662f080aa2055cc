#include "document/DocumentObserver.h"

#include <maya/MAnimControl.h>

namespace vellum {

namespace {
DocumentObserver* connected = nullptr;
}

DocumentObserver::~DocumentObserver() = default;

void DocumentObserver::documentChanged(LayerManager&) {
}

void DocumentObserver::activeLayerOpacityChanged(float) {
}

void DocumentObserver::timelineOverlayWanted() {
}

bool DocumentObserver::cameraExists(const QString&) const {
    return true;
}

QString DocumentObserver::currentCamera() const {
    return {};
}

bool DocumentObserver::isPlaying() const {
    return MAnimControl::isPlaying();
}

DocumentObserver& documentObserver() {
    static DocumentObserver alone;
    return connected ? *connected : alone;
}

void setDocumentObserver(DocumentObserver* observer) {
    connected = observer;
}

} // namespace vellum
