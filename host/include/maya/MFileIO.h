#pragma once
#include <maya/MStatus.h>
#include <maya/MString.h>
#include <maya/MStringArray.h>

// Operations on scene files, and what is being done to them right now.
class MFileIO {
public:
    enum ReferenceMode { kLoadDefault, kLoadAllReferences, kLoadNoReferences };

    MFileIO();
    virtual ~MFileIO();

    // Full path of the scene; of a scene without a name, where it would go.
    static MString currentFile();
    static MStatus setCurrentFile(const MString& fileName);
    // "mayaAscii" or "mayaBinary".
    static MString fileType();
    static MStatus getFileTypes(MStringArray& types);

    // Without force, these fail while the scene has unsaved changes.
    static MStatus newFile(bool force = false);
    static MStatus open(const MString& fileName, const char* type = nullptr, bool force = false,
                        ReferenceMode refMode = kLoadDefault, bool ignoreVersion = false);
    static MStatus save(bool force = false);
    static MStatus saveAs(const MString& fileName, const char* type = nullptr, bool force = false);
    static MStatus importFile(const MString& fileName, const char* type = nullptr,
                              bool preserveReferences = false, const char* nameSpace = nullptr,
                              bool ignoreVersion = false);
    static MStatus exportAll(const MString& fileName, const char* type = nullptr,
                             bool preserveReferences = false);

    // As they were given, absolute; of use while such a file is announced, empty otherwise.
    static MString beforeImportFilename(MStatus* ReturnStatus = nullptr);
    static MString beforeExportFilename(MStatus* ReturnStatus = nullptr);

    static bool isReadingFile();
    static bool isWritingFile();
    static bool isOpeningFile();
    static bool isImportingFile();
    static bool isNewingFile();

    static const char* className();
};
