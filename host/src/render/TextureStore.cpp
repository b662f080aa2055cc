#include "render/TextureStore.h"

#include <QOpenGLContext>
#include <QOpenGLFunctions>

#include <algorithm>
#include <cstring>

namespace host {

namespace {
constexpr unsigned int kBytesPerPixel = 4;
constexpr unsigned int kLargestSide = 16384;

bool possible(const MHWRender::MTextureDescription& d) {
    return d.fTextureType == MHWRender::kImage2D && d.fFormat == MHWRender::kR8G8B8A8_UNORM &&
           d.fWidth > 0 && d.fHeight > 0 && d.fWidth <= kLargestSide && d.fHeight <= kLargestSide &&
           d.fDepth <= 1 && d.fArraySlices <= 1 &&
           (d.fBytesPerRow == 0 || d.fBytesPerRow >= d.fWidth * kBytesPerPixel);
}

void copyRows(unsigned char* to, std::size_t toPitch, const void* from, std::size_t fromPitch,
              std::size_t rowBytes, unsigned int rows) {
    const auto* source = static_cast<const unsigned char*>(from);
    for (unsigned int row = 0; row < rows; ++row)
        std::memcpy(to + row * toPitch, source + row * fromPitch, rowBytes);
}
} // namespace

GlTexture::GlTexture(std::string name, const MHWRender::MTextureDescription& description,
                     const void* pixels, bool mipmaps)
    : name_(name.c_str()), description_(description), mipmaps_(mipmaps),
      pixels_(std::size_t(description.fWidth) * description.fHeight * kBytesPerPixel), api_(this) {
    const std::size_t rowBytes = std::size_t(description.fWidth) * kBytesPerPixel;
    if (pixels)
        copyRows(pixels_.data(), rowBytes, pixels,
                 description.fBytesPerRow ? description.fBytesPerRow : rowBytes, rowBytes,
                 description.fHeight);
}

GlTexture::~GlTexture() {
    for (const Copy& copy : copies_)
        TextureStore::instance().discard(copy.group, copy.name);
}

GlTexture* GlTexture::of(const MHWRender::MTexture* texture) {
    return texture ? texture->texture_ : nullptr;
}

MStatus GlTexture::update(const void* pixels, bool mipmaps, unsigned int rowPitch,
                          const MHWRender::MTextureUpdateRegion* region) {
    unsigned int left = 0, top = 0, right = description_.fWidth, bottom = description_.fHeight;
    if (region) {
        left = region->fXRangeMin;
        right = region->fXRangeMax;
        top = region->fYRangeMin;
        bottom = region->fYRangeMax;
    }
    if (!pixels || left >= right || top >= bottom || right > description_.fWidth ||
        bottom > description_.fHeight)
        return MS::kInvalidParameter;
    const std::size_t rowBytes = std::size_t(right - left) * kBytesPerPixel;
    if (rowPitch && rowPitch < rowBytes)
        return MS::kInvalidParameter;

    const std::size_t pitch = std::size_t(description_.fWidth) * kBytesPerPixel;
    copyRows(pixels_.data() + top * pitch + std::size_t(left) * kBytesPerPixel, pitch, pixels,
             rowPitch ? rowPitch : rowBytes, rowBytes, bottom - top);
    mipmaps_ = mipmaps;
    const QRect changed(int(left), int(top), int(right - left), int(bottom - top));
    for (Copy& copy : copies_)
        copy.stale |= changed;
    return MS::kSuccess;
}

void GlTexture::bind() {
    QOpenGLContextGroup* group = QOpenGLContext::currentContext()->shareGroup();
    copies_.erase(std::remove_if(copies_.begin(), copies_.end(),
                                 [](const Copy& copy) { return copy.group.isNull(); }),
                  copies_.end());
    auto found = std::find_if(copies_.begin(), copies_.end(),
                              [group](const Copy& copy) { return copy.group == group; });
    const bool create = found == copies_.end();
    if (create) {
        GLuint name = 0;
        glGenTextures(1, &name);
        const QRect all(0, 0, int(description_.fWidth), int(description_.fHeight));
        copies_.push_back({group, name, all});
        found = copies_.end() - 1;
    }
    lastName_ = found->name;
    glBindTexture(GL_TEXTURE_2D, found->name);
    if (!found->stale.isEmpty())
        upload(*found, create);
}

void GlTexture::upload(Copy& copy, bool create) {
    glPushClientAttrib(GL_CLIENT_PIXEL_STORE_BIT);
    glPixelStorei(GL_UNPACK_ALIGNMENT, kBytesPerPixel);
    glPixelStorei(GL_UNPACK_ROW_LENGTH, GLint(description_.fWidth));
    glPixelStorei(GL_UNPACK_SKIP_PIXELS, 0);
    glPixelStorei(GL_UNPACK_SKIP_ROWS, 0);
    const QRect area = copy.stale;
    if (create)
        glTexImage2D(GL_TEXTURE_2D, 0, GL_RGBA8, area.width(), area.height(), 0, GL_RGBA,
                     GL_UNSIGNED_BYTE, pixels_.data());
    else
        glTexSubImage2D(GL_TEXTURE_2D, 0, area.x(), area.y(), area.width(), area.height(), GL_RGBA,
                        GL_UNSIGNED_BYTE,
                        pixels_.data() +
                            (std::size_t(area.y()) * description_.fWidth + std::size_t(area.x())) *
                                kBytesPerPixel);
    glPopClientAttrib();
    copy.stale = {};
    // A complete chain costs little and lets the sampler choose any filter.
    if (mipmaps_ || create)
        QOpenGLContext::currentContext()->functions()->glGenerateMipmap(GL_TEXTURE_2D);
}

TextureStore& TextureStore::instance() {
    // Never destroyed: textures are released from other objects that live until the very end.
    static TextureStore& store = *new TextureStore;
    return store;
}

MHWRender::MTexture* TextureStore::acquire(const MString& name,
                                           const MHWRender::MTextureDescription& description,
                                           const void* pixels, bool mipmaps) {
    const std::string key = name.asChar();
    for (Entry& entry : entries_) {
        if (!key.empty() && key == entry.texture->name().asChar()) {
            ++entry.references;
            return entry.texture->api();
        }
    }
    if (!possible(description))
        return nullptr;
    entries_.push_back({std::make_shared<GlTexture>(key, description, pixels, mipmaps), 1});
    return entries_.back().texture->api();
}

void TextureStore::release(MHWRender::MTexture* texture) {
    const auto found =
        std::find_if(entries_.begin(), entries_.end(),
                     [texture](const Entry& entry) { return entry.texture->api() == texture; });
    if (found != entries_.end() && --found->references == 0)
        entries_.erase(found);
}

std::shared_ptr<GlTexture> TextureStore::find(const MHWRender::MTexture* texture) const {
    for (const Entry& entry : entries_)
        if (entry.texture->api() == texture)
            return entry.texture;
    return nullptr;
}

void TextureStore::discard(QPointer<QOpenGLContextGroup> group, unsigned int name) {
    // Names of a group that is gone went with it.
    if (!group.isNull())
        discarded_.push_back({group, name});
}

void TextureStore::collect() {
    QOpenGLContextGroup* group = QOpenGLContext::currentContext()->shareGroup();
    const auto done = [group](const Discarded& item) {
        if (item.group == group)
            glDeleteTextures(1, &item.name);
        return item.group.isNull() || item.group == group;
    };
    discarded_.erase(std::remove_if(discarded_.begin(), discarded_.end(), done), discarded_.end());
}

} // namespace host

namespace MHWRender {

MTextureDescription::MTextureDescription()
    : fWidth(0), fHeight(0), fDepth(0), fBytesPerRow(0), fBytesPerSlice(0), fMipmaps(0),
      fArraySlices(0), fFormat(kD24S8), fTextureType(kImage1D), fEnvMapType(kEnvNone) {
}

void MTextureDescription::setToDefault2DTexture() {
    fWidth = fHeight = fDepth = 1;
    fBytesPerRow = fBytesPerSlice = 0;
    fMipmaps = 0;
    fArraySlices = 1;
    fFormat = kR8G8B8A8_UNORM;
    fTextureType = kImage2D;
    fEnvMapType = kEnvNone;
}

const MString& MTexture::name() const {
    return texture_->name();
}
void* MTexture::resourceHandle() const {
    return texture_->handle();
}
void MTexture::textureDescription(MTextureDescription& desc) const {
    desc = texture_->description();
}
unsigned int MTexture::bytesPerPixel() const {
    return host::kBytesPerPixel;
}

MStatus MTexture::update(const void* pixelData, bool generateMipMaps, unsigned int rowPitch,
                         const MTextureUpdateRegion* region) {
    return texture_->update(pixelData, generateMipMaps, rowPitch, region);
}

const char* MTexture::className() {
    return "MTexture";
}

MTexture* MTextureManager::acquireTexture(const MString& textureName,
                                          const MTextureDescription& textureDesc,
                                          const void* pixelData, bool generateMipMaps) {
    return host::TextureStore::instance().acquire(textureName, textureDesc, pixelData,
                                                  generateMipMaps);
}

void MTextureManager::releaseTexture(MTexture* texture) const {
    host::TextureStore::instance().release(texture);
}

const char* MTextureManager::className() {
    return "MTextureManager";
}

} // namespace MHWRender
