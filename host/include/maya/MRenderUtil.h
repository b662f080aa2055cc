#pragma once

#include <maya/MCommonRenderSettingsData.h>
#include <maya/MStatus.h>

/// Rendering helpers; here the shared settings only.
class MRenderUtil {
public:
    static void getCommonRenderSettings(MCommonRenderSettingsData& rgData);

    static const char* className();
};
