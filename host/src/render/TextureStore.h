#pragma once

#include <QPointer>
#include <QRect>

#include <maya/MTextureManager.h>

#include <map>
#include <memory>
#include <string>
#include <vector>

class QOpenGLContextGroup;

namespace host {

/// Pixels of one texture and its copies on the graphics side, one for every group of contexts
/// that has drawn it. Pixels are RGBA of 8 bits, the first row on top.
class GlTexture {
public:
    GlTexture(std::string name, const MHWRender::MTextureDescription& description,
              const void* pixels, bool mipmaps);
    ~GlTexture();
    GlTexture(const GlTexture&) = delete;
    GlTexture& operator=(const GlTexture&) = delete;

    MHWRender::MTexture* api() { return &api_; }
    static GlTexture* of(const MHWRender::MTexture* texture);

    const MString& name() const { return name_; }
    const MHWRender::MTextureDescription& description() const { return description_; }

    /// See MTexture::update.
    MStatus update(const void* pixels, bool mipmaps, unsigned int rowPitch,
                   const MHWRender::MTextureUpdateRegion* region);

    /// Binds it to GL_TEXTURE_2D of the current context, uploading what changed since it was last
    /// bound there.
    void bind();
    /// The GLuint of the last context it was bound in; null before.
    void* handle() { return lastName_ ? &lastName_ : nullptr; }

    const std::vector<unsigned char>& pixels() const { return pixels_; }

private:
    struct Copy {
        QPointer<QOpenGLContextGroup> group;
        unsigned int name = 0;
        QRect stale; ///< Pixels newer here than there.
    };
    void upload(Copy& copy, bool create);

    MString name_;
    MHWRender::MTextureDescription description_;
    bool mipmaps_;
    std::vector<unsigned char> pixels_;
    std::vector<Copy> copies_;
    unsigned int lastName_ = 0;
    MHWRender::MTexture api_;
};

/// The renderer's textures by name, with their references.
class TextureStore {
public:
    static TextureStore& instance();

    MHWRender::MTextureManager& manager() { return manager_; }

    MHWRender::MTexture* acquire(const MString& name,
                                 const MHWRender::MTextureDescription& description,
                                 const void* pixels, bool mipmaps);
    void release(MHWRender::MTexture* texture);
    /// Shares the ownership, so that queued drawing outlives a release. Null for a stranger.
    std::shared_ptr<GlTexture> find(const MHWRender::MTexture* texture) const;

    std::size_t count() const { return entries_.size(); }

    /// Deletes the graphics copies of released textures that belong to the current context.
    void collect();
    void discard(QPointer<QOpenGLContextGroup> group, unsigned int name);

private:
    TextureStore() = default;

    struct Entry {
        std::shared_ptr<GlTexture> texture;
        int references = 1;
    };
    std::vector<Entry> entries_;
    struct Discarded {
        QPointer<QOpenGLContextGroup> group;
        unsigned int name;
    };
    std::vector<Discarded> discarded_;
    MHWRender::MTextureManager manager_;
};

} // namespace host
