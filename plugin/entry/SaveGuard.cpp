#include "plugin/entry/SaveGuard.h"

#include "document/LayerDataLosses.h"
#include "plugin/base/MayaStrings.h"
#include "plugin/base/Report.h"
#include "plugin/session/ModalScope.h"
#include "plugin/session/PluginState.h"

#include <QFileInfo>
#include <QMessageBox>

#include <maya/MFileIO.h>
#include <maya/MQtUtil.h>
#include <maya/MSceneMessage.h>

namespace vellum {

namespace {

/// The file that was opened with losses, until it is saved over, and what they were.
struct Guarded {
    QString file;
    QStringList losses;
};

Guarded& guarded() {
    static Guarded now;
    return now;
}

/// As the file system knows it, however it is reached; what is not there yet by its name.
QString currentFile() {
    const QString name = fromMaya(MFileIO::currentFile());
    const QString canonical = QFileInfo(name).canonicalFilePath();
    return canonical.isEmpty() ? name : canonical;
}

/// The first few losses, and how many more there are.
QString listed(const QStringList& losses) {
    constexpr int shown = 5;
    QString text = losses.mid(0, shown).join(QLatin1Char('\n'));
    if (losses.size() > shown)
        text += QStringLiteral("\n… and %1 more").arg(losses.size() - shown);
    return text;
}

bool userWants() {
    const ModalScope open;
    const auto answer = QMessageBox::question(
        MQtUtil::mainWindow(), QStringLiteral("Save over damaged drawings"),
        QStringLiteral("Not every drawing of this file could be read:\n\n%1\n\nSaving over the "
                       "file loses them for good. Save over it all the same?")
            .arg(listed(guarded().losses)),
        QMessageBox::Yes | QMessageBox::No, QMessageBox::No);
    return answer == QMessageBox::Yes;
}

void beforeSaveCheck(bool* allowed, void*) {
    *allowed = true;
    if (guarded().file.isEmpty() || currentFile() != guarded().file)
        return;
    if (pluginState().interactive) {
        *allowed = userWants();
        if (!*allowed)
            return;
    } else {
        *allowed = false;
        report::error(QStringLiteral("Not every drawing of this file could be read; saving over it "
                                     "loses them for good. Save again to do so, or under another "
                                     "name."));
    }
    guarded() = {};
}

void beforeAnotherScene(void*) {
    guarded() = {};
    layer_data::forgetLosses();
}

void afterOpen(void*) {
    if (!layer_data::losses().isEmpty())
        guarded() = {currentFile(), layer_data::losses()};
    layer_data::forgetLosses();
}

/// What an import could not read is still in its own file.
void afterImport(void*) {
    layer_data::forgetLosses();
}

struct Message {
    MSceneMessage::Message message;
    MMessage::MBasicFunction handler;
};

constexpr Message kMessages[] = {
    {MSceneMessage::kBeforeNew, beforeAnotherScene},
    {MSceneMessage::kBeforeOpen, beforeAnotherScene},
    {MSceneMessage::kAfterOpen, afterOpen},
    {MSceneMessage::kAfterImport, afterImport},
};

} // namespace

void installSaveGuard(MCallbackIdArray& ids) {
    MStatus status;
    const auto keep = [&](MCallbackId id) {
        if (status == MS::kSuccess)
            ids.append(id);
    };
    for (const Message& message : kMessages)
        keep(MSceneMessage::addCallback(message.message, message.handler, nullptr, &status));
    keep(MSceneMessage::addCheckCallback(MSceneMessage::kBeforeSaveCheck, beforeSaveCheck, nullptr,
                                         &status));
}

} // namespace vellum
