#include "Framework/UI/ControlLinks.h"

#include "Framework/Base/LBroadcaster.h"
#include "Framework/UI/LView.h"

void LinkListenerToControls(LListener& listener, LView& view) {
    for (const auto& pane : view.SubPanes()) {
        if (auto* broadcaster = dynamic_cast<LBroadcaster*>(pane.get())) {
            broadcaster->AddListener(&listener);
        }
        if (auto* inside = dynamic_cast<LView*>(pane.get())) {
            LinkListenerToControls(listener, *inside);
        }
    }
}
