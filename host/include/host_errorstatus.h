// The status names, once: acadstrc.h makes the enumeration of them, acadErrorStatusText the texts.
// The numbers behind eInvalidInput are this host's own; only names are meant to be used.
#pragma once

// clang-format off
// By kind: general ones, identifiers and handles, containers, opening and locks, what entities
// refuse, geometry, result buffers and files.
#define HOST_ERROR_STATUS_LIST(X) \
    X(eOk) X(eNotImplementedYet) X(eNotApplicable) X(eInvalidInput) X(eAmbiguousInput) \
    X(eAmbiguousOutput) X(eOutOfMemory) X(eBufferTooSmall) X(eInvalidOpenState) X(eHandleExists) \
    X(eNullHandle) X(eUnknownHandle) X(eHandleInUse) X(eNullObjectPointer) X(eNullObjectId) \
    X(eNullBlockName) X(eContainerNotEmpty) X(eNullEntityPointer) X(eIllegalEntityType) \
    X(eKeyNotFound) X(eDuplicateKey) X(eInvalidIndex) X(eDuplicateRecordName) X(eNotInDatabase) \
    X(eNoDatabase) X(eAlreadyInDb) X(eWasErased) X(eWasNotErased) X(ePermanentlyErased) \
    X(eWasOpenForRead) X(eWasOpenForWrite) X(eWasOpenForUndo) X(eWasOpenForNotify) \
    X(eWasNotifying) X(eAtMaxReaders) X(eHadMultipleReaders) X(eIsWriteProtected) \
    X(eNotOpenForRead) X(eNotOpenForWrite) X(eNotThatKindOfClass) X(eWrongObjectType) \
    X(eWrongDatabase) X(eOnLockedLayer) X(eDeletedEntry) X(eLockViolation) X(eLockConflict) \
    X(eLockChangeInProgress) X(eVetoed) X(eNoDocument) X(eNotNewlyCreated) \
    X(eCannotScaleNonUniformly) X(eCannotExplodeEntity) X(eCannotBeErasedByCaller) \
    X(eNullExtents) X(eInvalidExtents) X(eDegenerateGeometry) X(eInvalidAxis) \
    X(eNotPlanarEntity) X(eSelfIntersecting) X(eNonCoplanarGeometry) \
    X(eGeneralModelingFailure) X(eInvalidResBuf) X(eBadDxfSequence) X(eInvalidDxfCode) \
    X(eFileNotFound) X(eFileAccessErr) X(eFileSystemErr) X(eFilerError) X(eInvalidDwgVersion) \
    X(eUserBreak) X(eOutOfRange) X(eNullPtr)
// clang-format on
