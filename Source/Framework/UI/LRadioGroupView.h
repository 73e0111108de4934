#pragma once

#include "Framework/Base/LBroadcaster.h"
#include "Framework/UI/LView.h"

class LStdCheckBox;

/// Makes radio buttons of the check boxes directly inside it: switching one on switches the others off. It broadcasts
/// its message, with a pointer to the pane id of the button that is on (`PaneIDT*`) as parameter, when that changes.
///
/// Attributes of its record besides a pane's: "message" (0: nothing is broadcast).
class LRadioGroupView : public LView, public LBroadcaster {
public:
    explicit LRadioGroupView(LStream* stream);

    /// The id of the button that is on; 0 when none is.
    [[nodiscard]] PaneIDT GetCurrentRadioID() const;
    /// Switches the button with the id on.
    void SetCurrentRadioID(PaneIDT id);

    /// A button of the group has been switched on. Called by the button.
    void TakeChoice(LStdCheckBox& chosen);

private:
    MessageT m_message;
    PaneIDT m_told = 0;  ///< what the last message said
};
