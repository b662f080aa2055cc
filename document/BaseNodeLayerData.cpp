#include "document/BaseNodeLayerData.h"

#include "document/DocumentEnvironment.h"
#include "document/LayerDataFormat.h"
#include "document/LayerManager.h"
#include "plugin/base/Names.h"

#include <maya/MArgList.h>
#include <maya/MString.h>

#include <istream>
#include <ostream>

namespace vellum {

const MTypeId BaseNodeLayerData::id(kDataTypeId);
const MString BaseNodeLayerData::typeName(kDataTypeName);

BaseNodeLayerData::BaseNodeLayerData() = default;
BaseNodeLayerData::~BaseNodeLayerData() = default;

void* BaseNodeLayerData::creator() {
    return new BaseNodeLayerData;
}

void BaseNodeLayerData::createLayerManager() {
    if (!manager_)
        manager_ = std::make_shared<LayerManager>();
}

MStatus BaseNodeLayerData::readASCII(const MArgList& args, unsigned& endOfTheLastParsedElement) {
    createLayerManager();
    return layer_data::readAscii(*manager_, args, endOfTheLastParsedElement);
}

MStatus BaseNodeLayerData::readBinary(std::istream& in, unsigned length) {
    createLayerManager();
    return layer_data::readBinary(*manager_, in, length);
}

MStatus BaseNodeLayerData::writeASCII(std::ostream& out) {
    if (!manager_) {
        out << "-1";
        return MS::kFailure;
    }
    documentEnvironment().settleCameraNames();
    return layer_data::writeAscii(*manager_, out);
}

MStatus BaseNodeLayerData::writeBinary(std::ostream& out) {
    if (!manager_)
        return MS::kFailure;
    documentEnvironment().settleCameraNames();
    return layer_data::writeBinary(*manager_, out);
}

void BaseNodeLayerData::copy(const MPxData& other) {
    if (other.typeId() == id)
        manager_ = static_cast<const BaseNodeLayerData&>(other).manager_;
}

MTypeId BaseNodeLayerData::typeId() const {
    return id;
}

MString BaseNodeLayerData::name() const {
    return typeName;
}

} // namespace vellum
