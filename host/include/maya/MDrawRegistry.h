#pragma once

#include <maya/MObject.h>
#include <maya/MStatus.h>
#include <maya/MString.h>

namespace MHWRender {

class MPxDrawOverride;

/// Which override draws which classification of node.
class MDrawRegistry {
public:
    typedef MPxDrawOverride* (*DrawOverrideCreator)(const MObject&);

    /// The classification must begin with "drawdb/geometry". Fails when it is taken.
    static MStatus registerDrawOverrideCreator(const MString& drawClassification,
                                               const MString& registrantId,
                                               DrawOverrideCreator creator);
    /// Deletes every override the creator made. Fails when the pair was not registered.
    static MStatus deregisterDrawOverrideCreator(const MString& drawClassification,
                                                 const MString& registrantId);

    static const char* className();
};

} // namespace MHWRender
