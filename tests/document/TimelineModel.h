// A drawing as plainly as it can be said: cameras, layers, and moments with a mark for the picture.
// The rules of the document and of its frame operations, written once more without any cleverness.
#pragma once

#include <QString>

#include <map>
#include <optional>
#include <set>
#include <vector>

namespace timeline_model {

/// Moments in 1/600 s: whole numbers for frames of 24, 25 and 30 a second.
using Moment = long long;
constexpr Moment kFilm = 25, kPal = 24, kNtsc = 20;

struct PlainLayer {
    QString name;
    int state = 0;
    std::map<Moment, int> frames; ///< mark of the picture, 0 = blank
};

struct PlainCamera {
    std::vector<PlainLayer> layers;
    int active = -1;
};

/// What undo brings back.
struct Drawing {
    std::map<QString, PlainCamera> cameras;
    QString current;
    QString previous;
};

/// What an operation answers: done, or refused with this message ("" = silently).
using Refusal = std::optional<QString>;

struct Model {
    Drawing drawing;
    Moment now = kFilm;
    Moment unit = kFilm; ///< length of a frame
    std::map<Moment, int> clipboard;

    int whole(Moment moment) const { return static_cast<int>(moment / unit); }
    int frame() const { return whole(now); }

    PlainLayer* active(const QString& camera);
    QString uniqueName(const QString& wanted) const;

    // Layers.
    void insertLayer(const QString& camera, int at, const PlainLayer& layer);
    PlainLayer takeLayer(const QString& camera, int index);
    void makeCurrent(const QString& camera);

    // Frame operations; ranges include both ends.
    Refusal insert(const QString& camera, int first, int last);
    Refusal duplicate(const QString& camera);
    Refusal remove(const QString& camera, int first, int last);
    Refusal copy(const QString& camera, int first, int last);
    Refusal cut(const QString& camera, int first, int last);
    Refusal paste(const QString& camera, int start);
    Refusal clear(const QString& camera, int first, int last);
    Refusal step(bool forward);
    Refusal move(const QString& camera, int offset, int first, int last);
    Refusal retime(int first, int last, int count, bool relative, bool moveToNext);

    /// Index of the frame shown now.
    int shown(const PlainLayer& layer) const;
    bool has(const PlainLayer& layer, int frame) const;

private:
    Refusal refusal(const QString& camera, const char* lockedMessage);
    std::vector<Moment> within(const PlainLayer& layer, int first, int last) const;
};

} // namespace timeline_model
