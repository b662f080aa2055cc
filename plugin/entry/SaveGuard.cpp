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
#include <maya/MString.h>

#include <map>
#include <utility>

namespace vellum {

namespace {

/// Files that could not be read wholly, until they are written over, and what was lost of each.
using Guarded = std::map<QString, QStringList>;

Guarded& guarded() {
    static Guarded now;
    return now;
}

/// The one that was refused last. Without a user to ask, asking again is the yes.
QString& refused() {
    static QString now;
    return now;
}

QString& importing() {
    static QString now;
    return now;
}

/// As the file system knows it, however it is reached; what is not there yet by its name.
QString canonical(const MString& file) {
    const QString name = fromMaya(file);
    const QString path = QFileInfo(name).canonicalFilePath();
    return path.isEmpty() ? name : path;
}

/// The first few losses, and how many more there are.
QString listed(const QStringList& losses) {
    constexpr int shown = 5;
    QString text = losses.mid(0, shown).join(QLatin1Char('\n'));
    if (losses.size() > shown)
        text += QStringLiteral("\n… and %1 more").arg(losses.size() - shown);
    return text;
}

bool userWants(const QStringList& losses) {
    const ModalScope open;
    const auto answer = QMessageBox::question(
        MQtUtil::mainWindow(), QStringLiteral("Save over damaged drawings"),
        QStringLiteral("Not every drawing of this file could be read:\n\n%1\n\nSaving over the "
                       "file loses them for good. Save over it all the same?")
            .arg(listed(losses)),
        QMessageBox::Yes | QMessageBox::No, QMessageBox::No);
    return answer == QMessageBox::Yes;
}

bool mayWrite(const QString& file) {
    const bool again = std::exchange(refused(), QString()) == file;
    const auto found = guarded().find(file);
    if (found == guarded().end())
        return true;
    const bool wanted = pluginState().interactive ? userWants(found->second) : again;
    if (wanted) {
        guarded().erase(file);
    } else if (!pluginState().interactive) {
        refused() = file;
        report::error(QStringLiteral("Not every drawing of this file could be read; saving over it "
                                     "loses them for good. Save again to do so, or under another "
                                     "name."));
    }
    return wanted;
}

void beforeSaveCheck(bool* allowed, void*) {
    *allowed = mayWrite(canonical(MFileIO::currentFile()));
}

void beforeExportCheck(bool* allowed, void*) {
    *allowed = mayWrite(canonical(MFileIO::beforeExportFilename()));
}

void beforeAnotherScene(void*) {
    guarded().clear();
    refused().clear();
    layer_data::forgetLosses();
}

void guard(const QString& file) {
    if (!layer_data::losses().isEmpty() && !file.isEmpty())
        guarded()[file] = layer_data::losses();
    layer_data::forgetLosses();
}

void afterOpen(void*) {
    guard(canonical(MFileIO::currentFile()));
}

void beforeImport(void*) {
    importing() = canonical(MFileIO::beforeImportFilename());
}

void afterImport(void*) {
    guard(importing());
}

struct Message {
    MSceneMessage::Message message;
    MMessage::MBasicFunction handler;
};

constexpr Message kMessages[] = {
    {MSceneMessage::kBeforeNew, beforeAnotherScene},
    {MSceneMessage::kBeforeOpen, beforeAnotherScene},
    {MSceneMessage::kAfterOpen, afterOpen},
    {MSceneMessage::kBeforeImport, beforeImport},
    {MSceneMessage::kAfterImport, afterImport},
};

struct Check {
    MSceneMessage::Message message;
    MMessage::MCheckFunction handler;
};

constexpr Check kChecks[] = {
    {MSceneMessage::kBeforeSaveCheck, beforeSaveCheck},
    {MSceneMessage::kBeforeExportCheck, beforeExportCheck},
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
    for (const Check& check : kChecks)
        keep(MSceneMessage::addCheckCallback(check.message, check.handler, nullptr, &status));
}

} // namespace vellum
