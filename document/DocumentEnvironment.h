// What the document asks of the scene it lives in. The entry gives it an answer at load and takes
// it away at unload. Main thread only.
#pragma once

#include <QString>

namespace vellum {

/// Every question has an answer that does without a scene, so that the document works alone.
class DocumentEnvironment {
public:
    virtual ~DocumentEnvironment();

    /// Whether the scene has a camera whose transform has this name. Default: yes.
    virtual bool cameraExists(const QString& camera) const;

    /// Transform name of the active 3D view's camera. Default: none.
    virtual QString currentCamera() const;

    /// Cameras may have got other names that the documents are yet to hear of: they do so now.
    /// Asked before a document is looked for and before it is written. Default: does nothing.
    virtual void settleCameraNames();

    /// Whether the scene plays back. Default: asks Maya.
    virtual bool isPlaying() const;
};

/// The one that was set, or one with the default answers.
DocumentEnvironment& documentEnvironment();

/// It must live until another (or null) is set. Not owned.
void setDocumentEnvironment(DocumentEnvironment* environment);

} // namespace vellum
