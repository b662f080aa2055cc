// Descriptions of the values nodes have.
#pragma once

#include "scene/core/Object.h"

#include <maya/MFnData.h>
#include <maya/MFnNumericData.h>
#include <maya/MFnUnitAttribute.h>

#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace host {

/// Shared by all nodes of a type (or one node's own, when dynamic). Numbers of every kind are kept
/// as doubles: distances in centimetres, angles in radians, times in film frames (1/24 s).
class Attribute : public Object {
public:
    enum class Kind { Numeric, Unit, Enum, Typed, Matrix, Compound, Message };

    MFn::Type apiType() const override;
    bool hasFn(MFn::Type type) const override;

    bool isNumber() const {
        return kind == Kind::Numeric || kind == Kind::Unit || kind == Kind::Enum;
    }
    bool isInteger() const;
    /// Whether the number lies within the hard limits.
    bool admits(double number) const;
    std::shared_ptr<Attribute> self() {
        return std::static_pointer_cast<Attribute>(shared_from_this());
    }

    std::string name;
    std::string shortName;
    Kind kind = Kind::Numeric;
    MFnNumericData::Type numeric = MFnNumericData::kDouble; ///< of Numeric; k3Double… of Compound
    MFnUnitAttribute::Type unit = MFnUnitAttribute::kInvalid;
    MFnData::Type data = MFnData::kInvalid; ///< of Typed
    unsigned dataTypeId = 0;                ///< of Typed with kPlugin
    double defaultNumber = 0.0;
    std::string defaultText;
    ObjectPtr defaultData;
    std::optional<double> min, max, softMin, softMax;
    std::vector<std::pair<std::string, short>> fields; ///< of Enum

    bool readable = true;
    bool writable = true;
    bool storable = true;
    bool connectable = true;
    bool cached = true;
    bool keyable = false;
    bool channelBox = false;
    bool hidden = false;
    bool array = false;
    bool dynamic = false;

    std::weak_ptr<Attribute> parent;
    std::vector<std::shared_ptr<Attribute>> children;
};

using AttributePtr = std::shared_ptr<Attribute>;

} // namespace host
