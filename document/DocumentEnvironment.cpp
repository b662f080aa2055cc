#include "document/DocumentEnvironment.h"

#include <maya/MAnimControl.h>

namespace vellum {

namespace {
DocumentEnvironment* given = nullptr;
}

DocumentEnvironment::~DocumentEnvironment() = default;

bool DocumentEnvironment::cameraExists(const QString&) const {
    return true;
}

QString DocumentEnvironment::currentCamera() const {
    return {};
}

void DocumentEnvironment::settleCameraNames() {
}

bool DocumentEnvironment::isPlaying() const {
    return MAnimControl::isPlaying();
}

DocumentEnvironment& documentEnvironment() {
    static DocumentEnvironment alone;
    return given ? *given : alone;
}

void setDocumentEnvironment(DocumentEnvironment* environment) {
    given = environment;
}

} // namespace vellum
