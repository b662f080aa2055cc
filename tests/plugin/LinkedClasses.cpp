#include "plugin/LinkedClasses.h"

#include "document/BaseNodeLayerData.h"
#include "document/DocumentObserver.h"
#include "document/LayerManager.h"
#include "node/BaseNode.h"
#include "node/BaseNodeDrawOverride.h"
#include "node/NodeSearch.h"
#include "plugin/base/Names.h"
#include "plugin/base/Settings.h"
#include "plugin/session/Cameras.h"
#include "plugin/session/PluginState.h"

#define MNoPluginEntry
#define MNoVersionString
#include "foundation/Idle.h"
#include "scene/api/PluginTypes.h"

#include <maya/MDrawRegistry.h>

namespace vellum::test {

namespace {

/// Answers what the document asks about the scene, as in the loaded plug-in; hears nothing.
class SceneAnswers : public DocumentObserver {
    bool cameraExists(const QString& camera) const override { return vellum::cameraExists(camera); }
};

} // namespace

void LinkedClasses::SetUp() {
    static SceneAnswers answers;
    setDocumentObserver(&answers);
    resetSettings();
    resetPluginState();
    ASSERT_TRUE(host::addDataType(kDataTypeName, BaseNodeLayerData::id, BaseNodeLayerData::creator,
                                  MPxData::kData, "linked"));
    ASSERT_TRUE(host::addNodeType(kNodeTypeName, BaseNode::id, BaseNode::creator,
                                  BaseNode::initialize, MPxNode::kLocatorNode, kDrawClassification,
                                  "linked"));
    ASSERT_TRUE(MHWRender::MDrawRegistry::registerDrawOverrideCreator(
        kDrawClassification, kDrawRegistrant, BaseNodeDrawOverride::creator));
}

void LinkedClasses::TearDown() {
    EXPECT_TRUE(run(QStringLiteral("file -f -new")));
    host::idle::drain();
    EXPECT_TRUE(MHWRender::MDrawRegistry::deregisterDrawOverrideCreator(kDrawClassification,
                                                                        kDrawRegistrant));
    host::removeNodeType(kNodeTypeName);
    host::removeDataType(kDataTypeName);
    setDocumentObserver(nullptr);
    resetSettings();
}

BaseNode& LinkedClasses::node() {
    if (!activeNode()) {
        EXPECT_TRUE(run(QStringLiteral("createNode rvVellum")));
    }
    return *activeNode();
}

std::shared_ptr<LayerManager> LinkedClasses::document() {
    return node().layerManager();
}

} // namespace vellum::test
