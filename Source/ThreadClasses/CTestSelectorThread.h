#pragma once

#include "Framework/Base/LThread.h"

class IOTestSelector;

/// The thread of an automatic access-method selection; ends with it.
class CTestSelectorThread final : public LThread {
public:
    /// `selector` outlives its being done; see `IOTestSelector`.
    explicit CTestSelectorThread(IOTestSelector* selector);

    void* Run() override;

private:
    IOTestSelector* m_selector;
};
