#include "document/LayerDataLosses.h"

#include "document/Layer.h"
#include "plugin/base/Report.h"

namespace vellum::layer_data {

namespace {

QStringList& remembered() {
    static QStringList texts;
    return texts;
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
    const int time = frame->intTime();
    if (layer.addFrame(std::move(frame)) < 0) {
        loss(QStringLiteral("Dropped a drawing of %1 at frame %2: there is another one already")
                 .arg(layer.name(), QString::number(time)));
    }
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
