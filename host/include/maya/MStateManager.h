#pragma once

namespace MHWRender {

/// Names of the sampler settings; only the enumerations are here.
class MSamplerState {
public:
    enum TextureFilter {
        kMinMagMipPoint = 0,
        kMinMagPoint_MipLinear = 0x1,
        kMinPoint_MagLinear_MipPoint = 0x4,
        kMinPoint_MagMipLinear = 0x5,
        kMinLinear_MagMipPoint = 0x10,
        kMinLinear_MagPoint_MipLinear = 0x11,
        kMinMagLinear_MipPoint = 0x14,
        kMinMagMipLinear = 0x15,
        kAnisotropic = 0x55
    };
    enum TextureAddress {
        kTexWrap = 1,
        kTexMirror = 2,
        kTexClamp = 3,
        kTexBorder = 4,
        kTexMirrorOnce = 5
    };
};

/// Names of the blend settings; only the channel masks are here.
class MBlendState {
public:
    enum ChannelMask {
        kNoChannels = 0,
        kRedChannel = 1,
        kGreenChannel = 2,
        kBlueChannel = 4,
        kAlphaChannel = 8,
        kRGBChannels = (kRedChannel | kGreenChannel | kBlueChannel),
        kRGBAChannels = (kRGBChannels | kAlphaChannel)
    };
};

} // namespace MHWRender
