// The scene's answers to what the document asks.
#pragma once

#include "document/DocumentEnvironment.h"

namespace vellum {

class SceneEnvironment : public DocumentEnvironment {
public:
    bool cameraExists(const QString& camera) const override;
    QString currentCamera() const override;
    void settleCameraNames() override;
};

} // namespace vellum
