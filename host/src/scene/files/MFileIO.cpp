#include "foundation/Report.h"
#include "scene/core/SceneState.h"
#include "scene/files/FileIO.h"

#include <QDir>

#include <maya/MFileIO.h>

namespace {

// The API gives a status; the reason goes to the user.
template <class Work> MStatus attempt(Work work) {
    try {
        work();
        return MS::kSuccess;
    } catch (const host::FileError& error) {
        host::report::error(error.what());
        return MS::kFailure;
    }
}

bool mayDiscard(bool force) {
    return force || !host::sceneModified();
}

host::FileFormat formatFor(const char* type) {
    host::FileFormat format = host::fileIO().format();
    if (type && !host::formatFromName(type, format))
        throw host::FileError(std::string("Unknown file type: ") + type);
    return format;
}

MString announced(const std::string& file, MStatus* status) {
    if (status)
        *status = file.empty() ? MS::kFailure : MS::kSuccess;
    return file.c_str();
}

} // namespace

MFileIO::MFileIO() = default;
MFileIO::~MFileIO() = default;

const char* MFileIO::className() {
    return "MFileIO";
}

MString MFileIO::currentFile() {
    const std::string& name = host::fileIO().sceneName();
    if (!name.empty())
        return name.c_str();
    return QDir::current().filePath(QStringLiteral("untitled")).toUtf8().constData();
}

MStatus MFileIO::setCurrentFile(const MString& fileName) {
    if (fileName.length() == 0)
        return MS::kInvalidParameter;
    host::fileIO().setSceneName(fileName.asChar());
    return MS::kSuccess;
}

MString MFileIO::fileType() {
    return host::formatName(host::fileIO().format());
}

MStatus MFileIO::getFileTypes(MStringArray& types) {
    types.clear();
    types.append(host::formatName(host::FileFormat::MayaAscii));
    types.append(host::formatName(host::FileFormat::MayaBinary));
    return MS::kSuccess;
}

MStatus MFileIO::newFile(bool force) {
    if (!mayDiscard(force))
        return MS::kFailure;
    return attempt([] { host::fileIO().newScene(); });
}

MStatus MFileIO::open(const MString& fileName, const char*, bool force, ReferenceMode, bool) {
    if (!mayDiscard(force))
        return MS::kFailure;
    int errors = 0;
    const MStatus status = attempt([&] { errors = host::fileIO().open(fileName.asChar()).errors; });
    return status && errors > 0 ? MStatus(MS::kFailure) : status;
}

MStatus MFileIO::save(bool force) {
    return attempt([force] { host::fileIO().save(force); });
}

MStatus MFileIO::saveAs(const MString& fileName, const char* type, bool force) {
    return attempt([&] {
        const host::FileFormat format = formatFor(type);
        host::fileIO().setSceneName(fileName.asChar());
        if (type)
            host::fileIO().setFormat(format);
        host::fileIO().save(force);
    });
}

MStatus MFileIO::importFile(const MString& fileName, const char*, bool, const char*, bool) {
    int errors = 0;
    const MStatus status =
        attempt([&] { errors = host::fileIO().import(fileName.asChar()).errors; });
    return status && errors > 0 ? MStatus(MS::kFailure) : status;
}

MStatus MFileIO::exportAll(const MString& fileName, const char* type, bool) {
    return attempt([&] { host::fileIO().exportAll(fileName.asChar(), formatFor(type)); });
}

MString MFileIO::beforeImportFilename(MStatus* ReturnStatus) {
    return announced(host::fileIO().importedFile(), ReturnStatus);
}

MString MFileIO::beforeExportFilename(MStatus* ReturnStatus) {
    return announced(host::fileIO().exportedFile(), ReturnStatus);
}

bool MFileIO::isReadingFile() {
    return host::fileIO().isReading();
}
bool MFileIO::isWritingFile() {
    return host::fileIO().isWriting();
}
bool MFileIO::isOpeningFile() {
    return host::fileIO().isOpening();
}
bool MFileIO::isImportingFile() {
    return host::fileIO().isImporting();
}
bool MFileIO::isNewingFile() {
    return host::fileIO().isNewing();
}
