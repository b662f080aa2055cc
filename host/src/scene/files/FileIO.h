#pragma once
#include "scene/files/SaveTarget.h"
#include "scene/files/SceneSink.h"

#include <functional>
#include <map>
#include <set>
#include <string>
#include <vector>

// The scene as a file: new, open, import, save.
namespace host {

enum class FileFormat { MayaAscii, MayaBinary };

// "mayaAscii", "mayaBinary".
const char* formatName(FileFormat format);
bool formatFromName(const std::string& name, FileFormat& format);

// What reading a file came to. Problems have been reported as they were met.
struct ReadResult {
    int errors = 0;   // something of the file is not in the scene
    int warnings = 0; // unknown types and commands, missing plug-ins
};

// A line of `requires` or `fileInfo` kept so that it is written again.
struct SceneMemory {
    std::vector<std::pair<std::string, std::string>> fileInfo; // in order of first appearance
    std::vector<Requirement> missingPlugins;
    std::string settingsUuid; // of the script node that carries the playback settings
};

// One per process; main thread only. Everything that can go wrong throws FileError with a
// message for the user.
class FileIO {
public:
    FileIO();

    // Replaces the scene by an empty one. Emits "NewSceneOpened".
    void newScene();
    // Replaces the scene. A file that cannot be opened, or is none of ours, leaves the old scene
    // untouched. Emits "SceneOpened".
    ReadResult open(const std::string& path);
    ReadResult import(const std::string& path);
    // To sceneName(), in format(). `force` saves over a file that was read with errors, and
    // without plug-in data that fail to write themselves (each is named in a warning). A plug-in
    // may refuse this and the other ways of a scene.
    void save(bool force = false);
    void exportAll(const std::string& path, FileFormat format, bool force = false);

    // For a plug-in that goes while the scene has nodes of its types: these leave the scene, as
    // text, and are put back afterwards; without their types, as unknown nodes, which are saved
    // as what they were.
    QByteArray takeNodes(const std::vector<std::string>& types);
    void putBack(QByteArray nodes);

    // Full path, "" while untitled.
    const std::string& sceneName() const { return sceneName_; }
    void setSceneName(const std::string& path);
    FileFormat format() const { return format_; }
    void setFormat(FileFormat format) { format_ = format; }

    bool isNewing() const { return newing_; }
    bool isOpening() const { return opening_; }
    bool isImporting() const { return importing_; }
    bool isReading() const { return opening_ || importing_; }
    bool isWriting() const { return writing_; }
    // The file being imported or exported, from before that is announced until it is over.
    const std::string& importedFile() const { return importedFile_; }
    const std::string& exportedFile() const { return exportedFile_; }
    // Errors of the last open().
    int readErrors() const { return readErrors_; }
    // Whether save() would write over the file that was read with errors: something of it may not
    // be in the scene. Whoever was asked and wants that accepts it; it holds until the next file.
    bool savesOverDamage() const;
    void acceptDamage() { damagedFile_.clear(); }

    // Called before the scene is replaced (new, open), while its nodes are still there. Returns
    // an id for the removal.
    int addBeforeSceneReplaced(std::function<void()> callback);
    void removeBeforeSceneReplaced(int id);
    // Called when the scene is about to be saved; may still put something into it.
    void setBeforeSave(std::function<void()> callback) { beforeSave_ = std::move(callback); }

    // How files are written; tests put one in that fails. A null factory restores the usual.
    void setTargetFactory(SaveTargetFactory factory);

    SceneMemory& memory() { return memory_; }

private:
    void clearScene();
    ReadResult read(const std::string& path, QIODevice& device, bool binary);
    void write(const std::string& path, FileFormat format, bool force);
    std::string writeOnce(const std::string& path, FileFormat format,
                          const std::set<std::string>& without);

    std::string sceneName_;
    FileFormat format_ = FileFormat::MayaAscii;
    bool newing_ = false;
    bool opening_ = false;
    bool importing_ = false;
    bool writing_ = false;
    std::string importedFile_;
    std::string exportedFile_;
    int readErrors_ = 0;
    std::string damagedFile_; // read with errors, and not written since
    SceneMemory memory_;
    SaveTargetFactory targetFactory_;
    std::map<int, std::function<void()>> beforeReplaced_;
    std::function<void()> beforeSave_;
    int lastCallback_ = 0;
};

FileIO& fileIO();

} // namespace host
