#include "plugin/LinkedClasses.h"

#include "document/BaseNodeLayerData.h"
#include "document/Changes.h"
#include "document/LayerManager.h"
#include "node/BaseNode.h"
#include "node/BaseNodeDrawOverride.h"
#include "node/NodeSearch.h"
#include "plugin/base/Names.h"
#include "plugin/base/Settings.h"
#include "plugin/session/Cameras.h"
#include "plugin/session/PluginState.h"
#include "plugin/session/SceneEnvironment.h"
#include "plugin/session/Surfaces.h"

#define MNoPluginEntry
#define MNoVersionString
#include "foundation/Idle.h"
#include "scene/api/PluginTypes.h"

#include <maya/MDrawRegistry.h>

namespace vellum::test {

LinkedClasses::LinkedClasses() = default;
LinkedClasses::~LinkedClasses() = default;

void LinkedClasses::SetUp() {
    environment_ = std::make_unique<SceneEnvironment>();
    setDocumentEnvironment(environment_.get());
    resetSettings();
    resetPluginState();
    surfaces_ = std::make_unique<Surfaces>();
    setChangeListener(surfaces_.get());
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
    setChangeListener(nullptr);
    setDocumentEnvironment(nullptr);
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
