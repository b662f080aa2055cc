// The data behind the node's "layerData" plug: a share of the document, and its form in Maya scene
// files. Main thread only.
#pragma once

#include <maya/MPxData.h>
#include <maya/MTypeId.h>

#include <memory>

namespace vellum {

class LayerManager;

class BaseNodeLayerData : public MPxData {
public:
    static const MTypeId id;       ///< 0x11A887
    static const MString typeName; ///< "rvLayerData"

    BaseNodeLayerData();
    ~BaseNodeLayerData() override;

    static void* creator();

    /// Gives the data a fresh document when it has none.
    void createLayerManager();

    /// The document; empty until one was created, read or copied.
    std::shared_ptr<LayerManager> layerManager() const { return manager_; }

    /// See LayerDataFormat.h.
    MStatus readASCII(const MArgList& args, unsigned& endOfTheLastParsedElement) override;
    MStatus readBinary(std::istream& in, unsigned length) override;
    MStatus writeASCII(std::ostream& out) override;
    MStatus writeBinary(std::ostream& out) override;

    /// Shares the other's document: both then edit the same one.
    void copy(const MPxData& other) override;

    MTypeId typeId() const override;
    MString name() const override;

private:
    std::shared_ptr<LayerManager> manager_;
};

} // namespace vellum
