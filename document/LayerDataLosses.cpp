#include "document/LayerDataLosses.h"

#include "document/Layer.h"
#include "plugin/base/Report.h"

#include <QList>

#include <utility>

namespace vellum::layer_data {

namespace {

QStringList& remembered() {
    static QStringList texts;
    return texts;
}

/// Frames of one layer that were dropped, as they came.
struct DroppedFrames {
    quint64 layer; ///< its id
    QString name;
    QStringList times; ///< each once
    int count;
};

QList<DroppedFrames>& dropped() {
    static QList<DroppedFrames> layers;
    return layers;
}

/// The first of the texts: a long film must not fill the screen.
QString shortened(const QStringList& texts, const QString& separator) {
    constexpr int shown = 10;
    QString text = texts.mid(0, shown).join(separator);
    if (texts.size() > shown)
        text += separator + QStringLiteral("...");
    return text;
}

} // namespace

void loss(const QString& text) {
    report::error(text);
    remembered().append(text);
}

void lossOfPicture(const Layer& layer, int ordinal) {
    loss(QStringLiteral("Failed to load draw data: %1 (%2)")
             .arg(layer.name(), QString::number(ordinal)));
}

void keepFrame(Layer& layer, std::unique_ptr<Frame> frame) {
    const QString time = QString::number(frame->intTime());
    if (layer.addFrame(std::move(frame)) >= 0)
        return;
    if (dropped().isEmpty() || dropped().last().layer != layer.id())
        dropped().append({layer.id(), layer.name(), {}, 0});
    DroppedFrames& ofLayer = dropped().last();
    ++ofLayer.count;
    if (ofLayer.times.isEmpty() || ofLayer.times.last() != time)
        ofLayer.times.append(time);
}

void tellOfDroppedFrames() {
    if (dropped().isEmpty())
        return;
    int count = 0;
    QStringList layers;
    for (const DroppedFrames& ofLayer : std::exchange(dropped(), {})) {
        count += ofLayer.count;
        layers.append(QStringLiteral("%1 at %2")
                          .arg(ofLayer.name, shortened(ofLayer.times, QStringLiteral(", "))));
    }
    loss(QStringLiteral("Drawings dropped, because their layer has another one at their frame: "
                        "%1 (%2)")
             .arg(QString::number(count), shortened(layers, QStringLiteral("; "))));
}

QString recoveredLayerName() {
    return QStringLiteral("Recovered");
}

const QStringList& losses() {
    return remembered();
}

void forgetLosses() {
    remembered().clear();
}

} // namespace vellum::layer_data
