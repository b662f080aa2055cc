// The ghosts (onion skin) of a layer: its neighbouring frames, faded with distance, in one picture.
// The nearest neighbour has opacity 0.4, the k-th of n 0.4 - (k - 1) * 0.4 / n. Main thread only.
#pragma once

#include <QColor>
#include <QImage>

#include <vector>

namespace vellum {

class Layer;

/// What is to be ghosted, from the settings.
struct GhostOptions {
    int previous = 0; ///< neighbours before the current frame, 0 = none
    int next = 0;
    bool tint = false;
    QColor previousColor;
    QColor nextColor;
    bool hiddenByPlayback = false; ///< there would be some; of no matter for the picture

    bool operator==(const GhostOptions& other) const;

    /// None while the scene plays back and ghosts are switched off during playback.
    static GhostOptions fromSettings(bool playing);
};

class GhostCanvas {
public:
    /// Brings the picture up to date; `layer` may be null. True when it changed.
    bool update(const Layer* layer, const GhostOptions& options);

    bool isEmpty() const { return image_.isNull(); }

    /// 1024 x 1024, Format_RGBA8888, straight alpha; null when empty.
    const QImage& image() const { return image_; }

    /// Another one whenever update() changes the picture, never 0.
    quint64 version() const { return version_; }

private:
    /// What the picture was made of: revisions of the frames, 0 for none, farthest first.
    struct Recipe {
        GhostOptions options;
        std::vector<quint64> previous;
        std::vector<quint64> next;

        bool operator==(const Recipe& other) const;
    };

    void paint(const Layer& layer, const Recipe& recipe);

    Recipe recipe_;
    QImage image_;
    quint64 version_ = 1;
};

} // namespace vellum
