#include "scene/files/FileIO.h"

#include "foundation/Events.h"
#include "foundation/Report.h"
#include "foundation/UndoQueue.h"
#include "scene/api/PluginTypes.h"
#include "scene/core/SceneState.h"
#include "scene/files/AsciiWriter.h"
#include "scene/files/BinaryWriter.h"
#include "scene/files/KeptStatements.h"
#include "scene/files/SceneBuilder.h"
#include "scene/files/SceneReaders.h"
#include "scene/files/SceneWalk.h"

#include <QBuffer>
#include <QFile>
#include <QFileInfo>

#include <maya/MSceneMessage.h>

#include <algorithm>

#if defined(__GLIBC__)
#include <malloc.h>
#endif

namespace host {

namespace {

// True for the time of a scope.
class Flag {
public:
    explicit Flag(bool& flag) : flag_(flag) { flag_ = true; }
    ~Flag() { flag_ = false; }
    Flag(const Flag&) = delete;
    Flag& operator=(const Flag&) = delete;

private:
    bool& flag_;
};

// Holds a file's name while something is done with it.
class Named {
public:
    Named(std::string& name, const std::string& file) : name_(name) { name_ = file; }
    ~Named() { name_.clear(); }
    Named(const Named&) = delete;
    Named& operator=(const Named&) = delete;

private:
    std::string& name_;
};

std::string absolutePath(const std::string& path) {
    return QFileInfo(QString::fromStdString(path)).absoluteFilePath().toStdString();
}

// The same for every way to name one file.
std::string canonicalPath(const std::string& path) {
    const QFileInfo file(QString::fromStdString(path));
    const QString canonical = file.canonicalFilePath();
    return (canonical.isEmpty() ? file.absoluteFilePath() : canonical).toStdString();
}

// Tells before and after something that no plug-in refuses.
class Announced {
public:
    Announced(MSceneMessage::Message check, MSceneMessage::Message before,
              MSceneMessage::Message after)
        : after_(after) {
        if (!messages::ask(check))
            throw FileError("File operation cancelled by user supplied callback.");
        messages::tell(before);
    }
    ~Announced() { messages::tell(after_); }
    Announced(const Announced&) = delete;
    Announced& operator=(const Announced&) = delete;

private:
    const MSceneMessage::Message after_;
};

std::string fileNameOf(const std::string& path) {
    return QFileInfo(QString::fromStdString(path)).fileName().toStdString();
}

// The texts of a big drawing pass through the heap while it is read or written; without this the
// process keeps their pages.
void giveMemoryBack() {
#if defined(__GLIBC__)
    malloc_trim(0);
#endif
}

FileError couldNotSave(const std::string& path, const std::string& reason) {
    return FileError("Could not save \"" + path + "\": " + reason +
                     ". The previous file is unchanged.");
}

std::unique_ptr<SceneSink> makeSink(QIODevice& device, FileFormat format) {
    if (format == FileFormat::MayaAscii)
        return std::make_unique<AsciiWriter>(device);
    return std::make_unique<BinaryWriter>(device);
}

enum class Kind { Ascii, Binary, Other };

// By what is in the file; its name may be anything.
Kind kindOf(QIODevice& device) {
    if (isChunkFile(device))
        return Kind::Binary;
    const QByteArray start = device.peek(64);
    return start.startsWith("//Maya ASCII") ? Kind::Ascii : Kind::Other;
}

} // namespace

const char* formatName(FileFormat format) {
    return format == FileFormat::MayaAscii ? "mayaAscii" : "mayaBinary";
}

bool formatFromName(const std::string& name, FileFormat& format) {
    if (name != "mayaAscii" && name != "mayaBinary")
        return false;
    format = name == "mayaAscii" ? FileFormat::MayaAscii : FileFormat::MayaBinary;
    return true;
}

FileIO& fileIO() {
    static FileIO instance;
    return instance;
}

FileIO::FileIO() : targetFactory_(makeFileTarget) {
}

void FileIO::setTargetFactory(SaveTargetFactory factory) {
    targetFactory_ = factory ? std::move(factory) : SaveTargetFactory(makeFileTarget);
}

int FileIO::addBeforeSceneReplaced(std::function<void()> callback) {
    beforeReplaced_[++lastCallback_] = std::move(callback);
    return lastCallback_;
}

void FileIO::removeBeforeSceneReplaced(int id) {
    beforeReplaced_.erase(id);
}

void FileIO::setSceneName(const std::string& path) {
    sceneName_ = path.empty() ? std::string() : absolutePath(path);
    if (fileNameOf(path).size() > 3) {
        const std::string ending = path.substr(path.size() - 3);
        if (ending == ".ma")
            format_ = FileFormat::MayaAscii;
        else if (ending == ".mb")
            format_ = FileFormat::MayaBinary;
    }
    readErrors_ = 0;
}

bool FileIO::savesOverDamage() const {
    return !damagedFile_.empty() && canonicalPath(sceneName_) == canonicalPath(damagedFile_);
}

void FileIO::clearScene() {
    const auto callbacks = beforeReplaced_; // a callback may remove itself
    for (const auto& [id, callback] : callbacks)
        callback();
    resetScene();
    memory_ = SceneMemory();
    keptStatements().clear();
    sceneName_.clear();
    readErrors_ = 0;
    damagedFile_.clear();
}

void FileIO::newScene() {
    {
        const Announced announced(MSceneMessage::kBeforeNewCheck, MSceneMessage::kBeforeNew,
                                  MSceneMessage::kAfterNew);
        const Flag flag(newing_);
        clearScene();
    }
    setSceneModified(false);
    events::emit("NewSceneOpened");
    giveMemoryBack();
}

ReadResult FileIO::read(const std::string& path, QIODevice& device, bool binary) {
    const UndoSuspender noUndo;
    SceneBuilder builder(path, importing_, memory_);
    messages::tell(MSceneMessage::kBeforeFileRead);
    if (binary)
        readBinaryScene(device, builder);
    else
        readAsciiScene(device, builder);
    const ReadResult result = builder.finish();
    messages::tell(MSceneMessage::kAfterFileRead);
    return result;
}

ReadResult FileIO::open(const std::string& path) {
    const std::string full = absolutePath(path);
    QFile file(QString::fromStdString(full));
    if (!file.exists())
        throw FileError("File not found: " + full);
    if (QFileInfo(file).isDir() || !file.open(QIODevice::ReadOnly))
        throw FileError("Cannot open file \"" + full + "\": " + file.errorString().toStdString());
    const Kind kind = kindOf(file);
    if (kind == Kind::Other)
        throw FileError("File is of an unknown type: " + full);
    ReadResult result;
    {
        const Announced announced(MSceneMessage::kBeforeOpenCheck, MSceneMessage::kBeforeOpen,
                                  MSceneMessage::kAfterOpen);
        clearScene();
        {
            const Flag flag(opening_);
            result = read(full, file, kind == Kind::Binary);
        }
        setSceneName(full);
        format_ = kind == Kind::Binary ? FileFormat::MayaBinary : FileFormat::MayaAscii;
        readErrors_ = result.errors;
        if (result.errors > 0)
            damagedFile_ = full;
        setSceneModified(false);
    }
    messages::tell(MSceneMessage::kSceneUpdate);
    events::emit("SceneOpened");
    giveMemoryBack();
    return result;
}

ReadResult FileIO::import(const std::string& path) {
    const std::string full = absolutePath(path);
    QFile file(QString::fromStdString(full));
    if (!file.exists())
        throw FileError("File not found: " + full);
    if (QFileInfo(file).isDir() || !file.open(QIODevice::ReadOnly))
        throw FileError("Cannot open file \"" + full + "\": " + file.errorString().toStdString());
    const Kind kind = kindOf(file);
    if (kind == Kind::Other)
        throw FileError("File is of an unknown type: " + full);
    ReadResult result;
    {
        const Named named(importedFile_, full);
        const Announced announced(MSceneMessage::kBeforeImportCheck, MSceneMessage::kBeforeImport,
                                  MSceneMessage::kAfterImport);
        const Flag flag(importing_);
        result = read(full, file, kind == Kind::Binary);
    }
    messages::tell(MSceneMessage::kSceneUpdate);
    undoQueue().flush(); // steps before the import may speak of names that mean something else now
    setSceneModified(true);
    events::emit("SceneImported");
    giveMemoryBack();
    return result;
}

QByteArray FileIO::takeNodes(const std::vector<std::string>& types) {
    QBuffer text;
    if (std::none_of(types.begin(), types.end(), nodesOfTypeExist))
        return {};
    text.open(QIODevice::WriteOnly);
    {
        const Flag flag(writing_);
        AsciiWriter writer(text);
        writeNodes(writer, types);
    }
    for (const std::string& type : types)
        deleteNodesOfType(type);
    return text.data();
}

void FileIO::putBack(QByteArray nodes) {
    if (nodes.isEmpty())
        return;
    QBuffer text(&nodes);
    text.open(QIODevice::ReadOnly);
    const Flag flag(importing_);
    read("nodes of a plug-in", text, false);
}

void FileIO::save(bool force) {
    if (sceneName_.empty())
        throw FileError("The scene has no name. Use file -rename first.");
    if (savesOverDamage() && !force)
        throw FileError(
            "Errors occurred while reading \"" + sceneName_ +
            "\"; saving over it may lose data. Save under another name or with -force.");
    {
        const Announced announced(MSceneMessage::kBeforeSaveCheck, MSceneMessage::kBeforeSave,
                                  MSceneMessage::kAfterSave);
        const bool overDamage = savesOverDamage();
        if (beforeSave_)
            beforeSave_();
        write(sceneName_, format_, force);
        if (overDamage)
            damagedFile_.clear();
        readErrors_ = 0;
        setSceneModified(false);
    }
    events::emit("SceneSaved");
}

void FileIO::exportAll(const std::string& path, FileFormat format, bool force) {
    const std::string full = absolutePath(path);
    const Named named(exportedFile_, full);
    const Announced announced(MSceneMessage::kBeforeExportCheck, MSceneMessage::kBeforeExport,
                              MSceneMessage::kAfterExport);
    write(full, format, force);
}

void FileIO::write(const std::string& path, FileFormat format, bool force) {
    std::set<std::string> without;
    {
        const Flag flag(writing_);
        for (std::string failed = writeOnce(path, format, without); !failed.empty();
             failed = writeOnce(path, format, without)) {
            if (!force)
                throw couldNotSave(path, "the data of " + failed + " cannot be written");
            report::warning("Saved without the data of " + failed);
            without.insert(failed);
        }
    }
    giveMemoryBack();
}

// Returns the plug whose data could not write themselves, "" when the file is in place.
std::string FileIO::writeOnce(const std::string& path, FileFormat format,
                              const std::set<std::string>& without) {
    const std::unique_ptr<SaveTarget> target = targetFactory_(QString::fromStdString(path));
    const auto check = [&](bool ok) {
        if (ok)
            return;
        const std::string reason = target->errorString().toStdString();
        target->discard();
        throw couldNotSave(path, reason);
    };
    check(target->open());
    std::string failed;
    try {
        const std::unique_ptr<SceneSink> sink = makeSink(target->device(), format);
        failed = writeScene(*sink, fileNameOf(path), memory_, without);
    } catch (const FileError& error) {
        target->discard();
        throw couldNotSave(path, error.what());
    }
    if (!failed.empty()) {
        target->discard();
        return failed;
    }
    check(target->sync());
    check(target->commit());
    return {};
}

} // namespace host
