// The plug-in's own classes, linked into the test and registered with the host, so that a test can
// call them. Not beside the loaded library: the names are the same.
#pragma once

#include "support/Session.h"

#include <memory>

namespace vellum {
class BaseNode;
class LayerManager;
class SceneEnvironment;
class Surfaces;
} // namespace vellum

namespace vellum::test {

class LinkedClasses : public HostSession {
protected:
    LinkedClasses();
    ~LinkedClasses() override;

    void SetUp() override;
    void TearDown() override;

    /// The scene's drawing node, made on first use.
    BaseNode& node();
    std::shared_ptr<LayerManager> document();

private:
    std::unique_ptr<SceneEnvironment> environment_;
    std::unique_ptr<Surfaces> surfaces_; ///< connected as the plug-in does it
};

} // namespace vellum::test
