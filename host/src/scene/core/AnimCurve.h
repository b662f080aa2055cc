// A curve of keys over time that drives a plug.
#pragma once

#include "scene/core/Node.h"

#include <maya/MFnAnimCurve.h>

#include <vector>

namespace host {

class AnimCurve : public Node {
public:
    using Node::Node;

    struct Key {
        MTime time;
        double value = 0.0;
        MFnAnimCurve::TangentType in = MFnAnimCurve::kTangentAuto;
        MFnAnimCurve::TangentType out = MFnAnimCurve::kTangentAuto;
    };

    /// Flat outside the keys unless it cycles or oscillates. Between keys: stepped, linear, or a
    /// cubic Hermite segment whose slopes come from the tangent types.
    double valueAt(const MTime& when) const;
    MFnAnimCurve::AnimCurveType curveType() const;

    std::vector<Key> keys; ///< ascending, no two at one time

    /// What happens before the first and after the last key; kept in the plugs "preInfinity" and
    /// "postInfinity".
    MFnAnimCurve::InfinityType infinity(bool before) const;

protected:
    bool compute(Slot& slot, const MTime& when, PlugValue& value) override;

private:
    double slope(std::size_t key, bool incoming) const;
    double inside(double seconds) const;
};

} // namespace host
