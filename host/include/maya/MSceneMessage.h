#pragma once

#include <maya/MMessage.h>

/// Callbacks before and after what happens to the scene as a file. A check callback may refuse it:
/// then neither the message before nor the one after is sent.
class MSceneMessage : public MMessage {
public:
    enum Message {
        kSceneUpdate,
        kBeforeNew,
        kAfterNew,
        kBeforeImport,
        kAfterImport,
        kBeforeOpen,
        kAfterOpen,
        kBeforeFileRead,
        kAfterFileRead,
        kAfterSceneReadAndRecordEdits,
        kBeforeExport,
        kAfterExport,
        kBeforeSave,
        kAfterSave,
        kBeforeReference,
        kAfterReference,
        kBeforeRemoveReference,
        kAfterRemoveReference,
        kBeforeImportReference,
        kAfterImportReference,
        kBeforeExportReference,
        kAfterExportReference,
        kBeforeUnloadReference,
        kAfterUnloadReference,
        kBeforeSoftwareRender,
        kAfterSoftwareRender,
        kBeforeSoftwareFrameRender,
        kAfterSoftwareFrameRender,
        kSoftwareRenderInterrupted,
        kMayaInitialized,
        kMayaExiting,
        kBeforeNewCheck,
        kBeforeOpenCheck,
        kBeforeSaveCheck,
        kBeforeImportCheck,
        kBeforeExportCheck,
        kBeforeLoadReference,
        kAfterLoadReference,
        kBeforeLoadReferenceCheck,
        kBeforeReferenceCheck,
        kBeforeCreateReferenceCheck = kBeforeReferenceCheck,
        kBeforePluginLoad,
        kAfterPluginLoad,
        kBeforePluginUnload,
        kAfterPluginUnload,
        kBeforeCreateReference,
        kAfterCreateReference,
        kExportStarted,
        kBeforeLoadReferenceAndRecordEdits,
        kAfterLoadReferenceAndRecordEdits,
        kBeforeCreateReferenceAndRecordEdits,
        kAfterCreateReferenceAndRecordEdits,
        kLast
    };

    /// kFailure for the messages that ask.
    static MCallbackId addCallback(Message msg, MBasicFunction func, void* clientData = nullptr,
                                   MStatus* ReturnStatus = nullptr);
    /// For the messages that ask only.
    static MCallbackId addCheckCallback(Message msg, MCheckFunction func,
                                        void* clientData = nullptr,
                                        MStatus* ReturnStatus = nullptr);
    /// The strings are the namespace's name before and after.
    static MCallbackId addNamespaceRenamedCallback(MTwoStringFunction func,
                                                   void* clientData = nullptr,
                                                   MStatus* ReturnStatus = nullptr);
};
