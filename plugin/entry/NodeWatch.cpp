#include "plugin/entry/NodeWatch.h"

#include "document/Changes.h"
#include "plugin/base/Names.h"
#include "plugin/session/SceneTime.h"

#include <QMetaObject>
#include <QObject>

#include <maya/MDGMessage.h>
#include <maya/MFileIO.h>

#include <memory>
#include <utility>

namespace vellum {

namespace {

/// Whoever waits for the event loop; what waits with it ends with it.
class News : public QObject {
public:
    void add(Changes changes) {
        if (!waiting_)
            QMetaObject::invokeMethod(
                this, [this] { deliver(); }, Qt::QueuedConnection);
        waiting_ |= changes;
    }

private:
    void deliver() {
        const Changes changes = std::exchange(waiting_, Changes());
        if (MFileIO::isReadingFile())
            return; // it tells when it has been read
        if (changes.testFlag(Change::Drawings))
            drawingsChanged(Change::Drawings);
        else
            tell(changes);
    }

    Changes waiting_;
};

std::unique_ptr<News>& news() {
    static std::unique_ptr<News> one;
    return one;
}

void add(Change change) {
    if (news() && !MFileIO::isReadingFile())
        news()->add(change);
}

void onDrawing(MObject&, void*) {
    add(Change::Drawings);
}

// The list of layers tells which of its cameras are in the scene.
void onCamera(MObject&, void*) {
    add(Change::LayersAsked);
}

} // namespace

void installNodeWatch(MCallbackIdArray& ids) {
    news() = std::make_unique<News>();
    const struct {
        const char* type;
        MMessage::MNodeFunction handler;
    } watched[] = {{kNodeTypeName, onDrawing}, {"camera", onCamera}};
    for (const auto& [type, handler] : watched) {
        for (const auto install :
             {MDGMessage::addNodeAddedCallback, MDGMessage::addNodeRemovedCallback}) {
            MStatus status;
            const MCallbackId id = install(handler, type, nullptr, &status);
            if (status == MS::kSuccess)
                ids.append(id);
        }
    }
}

void removeNodeWatch() {
    news().reset();
}

} // namespace vellum
