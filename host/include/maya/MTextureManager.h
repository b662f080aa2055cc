#pragma once

#include <maya/MStatus.h>
#include <maya/MString.h>
#include <maya/MViewport2Renderer.h>

#include <cstddef>

namespace host {
class TextureStore;
class GlTexture;
} // namespace host

namespace MHWRender {

enum MTextureType {
    kImage1D = 0,
    kImage1DArray,
    kImage2D,
    kImage2DArray,
    kVolumeTexture,
    kCubeMap,
    kCubeMapArray
};

enum MEnvironmentMapType { kEnvNone = 0 };

/// Shape of a block of pixels. Starts unset; see setToDefault2DTexture.
class MTextureDescription {
public:
    MTextureDescription();
    /// One pixel, RGBA of 8 bits, a single two-dimensional image.
    void setToDefault2DTexture();

    unsigned int fWidth;
    unsigned int fHeight;
    unsigned int fDepth;
    unsigned int fBytesPerRow;   ///< 0: rows follow each other without a gap.
    unsigned int fBytesPerSlice; ///< 0: as rows and height give it.
    unsigned int fMipmaps;
    unsigned int fArraySlices;
    MRasterFormat fFormat;
    MTextureType fTextureType;
    MEnvironmentMapType fEnvMapType;
};

/// Part of a texture, in pixels; each maximum is one past the last pixel.
class MTextureUpdateRegion {
public:
    MTextureUpdateRegion()
        : fXRangeMin(0), fXRangeMax(1), fYRangeMin(0), fYRangeMax(1), fZRangeMin(0), fZRangeMax(1) {
    }
    unsigned int fXRangeMin;
    unsigned int fXRangeMax;
    unsigned int fYRangeMin;
    unsigned int fYRangeMax;
    unsigned int fZRangeMin;
    unsigned int fZRangeMax;
};

/// A texture of the renderer. Obtained from and given back to MTextureManager.
class MTexture {
public:
    const MString& name() const;
    /// Pointer to the GLuint of the OpenGL texture; null before it was first drawn.
    void* resourceHandle() const;
    void textureDescription(MTextureDescription& desc) const;
    unsigned int bytesPerPixel() const;

    /// Replaces the pixels, or those of the region; pixelData then points at the region's first
    /// pixel. rowPitch 0 means rows without a gap between them. Fails without changing anything
    /// for missing pixels, a row pitch shorter than a row, or a region outside the texture.
    MStatus update(const void* pixelData, bool generateMipMaps, unsigned int rowPitch = 0,
                   const MTextureUpdateRegion* region = NULL);

    static const char* className();

private:
    explicit MTexture(host::GlTexture* texture) : texture_(texture) {}
    ~MTexture() = default;
    MTexture(const MTexture&) = delete;
    MTexture& operator=(const MTexture&) = delete;

    host::GlTexture* texture_;
    friend class host::GlTexture;
    friend class host::TextureStore;
};

/// Makes textures and keeps them by name.
class MTextureManager {
public:
    /// A texture of that name that exists already is returned as it is, whatever the description
    /// and pixels, with one more reference. Null pixelData makes an empty (transparent) texture.
    /// Null for a description the renderer cannot make. An empty name is never shared.
    MTexture* acquireTexture(const MString& textureName, const MTextureDescription& textureDesc,
                             const void* pixelData, bool generateMipMaps = true);

    /// Drops one reference; the last one deletes the texture. Null is ignored.
    void releaseTexture(MTexture* texture) const;

    static const char* className();

private:
    MTextureManager() = default;
    friend class host::TextureStore;
};

} // namespace MHWRender
