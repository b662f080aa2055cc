// Settings of a rendering that all renderers share; filled by MRenderUtil.
#pragma once

class MCommonRenderSettingsData {
public:
    MCommonRenderSettingsData();
    ~MCommonRenderSettingsData();

    static const char* className();

    unsigned int width;      ///< Pixels.
    unsigned int height;     ///< Pixels.
    float pixelAspectRatio;  ///< Width of a pixel over its height.
    float deviceAspectRatio; ///< Width of the picture over its height, as shown.
    float dotPerInch;
};
