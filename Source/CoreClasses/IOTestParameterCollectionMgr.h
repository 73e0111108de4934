#pragma once

#include "SupportingClasses/CPtrArray.h"

class IOTestParameters;

/// The seventeen standard tests, in the order of their ids: the id is the index. Built once and never changed. Main
/// thread only.
class IOTestParameterCollectionMgr {
public:
    /// Builds the table; registers itself as the process-wide collection if none is registered.
    IOTestParameterCollectionMgr();
    virtual ~IOTestParameterCollectionMgr();
    IOTestParameterCollectionMgr(const IOTestParameterCollectionMgr&) = delete;
    IOTestParameterCollectionMgr& operator=(const IOTestParameterCollectionMgr&) = delete;

    /// The registered collection, made at the first call. Stays the class's property.
    [[nodiscard]] static IOTestParameterCollectionMgr* GetSingleton();
    static void DestroySingleton();

    /// The presets: pointers to `IOTestParameters` that stay the collection's property.
    [[nodiscard]] CPtrArray* GetList() { return &m_presets; }

    /// Copies what preset `id` defines into `out`. False, with `out` unchanged, for an id outside the table.
    [[nodiscard]] bool GetCopyOfStandardParametersByID(int id, IOTestParameters& out) const;

private:
    CPtrArray m_presets;
};
