#pragma once

#include "Framework/UI/LView.h"

#include <string>
#include <vector>

/// Says in which order Tab visits panes of the window. Without one the order is that of the layout.
///
/// Attributes of its record besides a pane's: "order", the ids of the panes, separated by spaces. The window must have
/// them.
class LTabGroup : public LView {
public:
    explicit LTabGroup(LStream* stream);

protected:
    void FinishCreateSelf() override;

private:
    std::vector<PaneIDT> m_order;
    std::string m_description;  ///< of its record, for error texts
};
