#pragma once

#include "Framework/UI/LPane.h"

#include <memory>
#include <vector>

/// A pane that holds panes.
class LView : public LPane {
public:
    using LPane::LPane;
    ~LView() override;

    /// Takes the pane over and, when this view has a peer, builds the pane's.
    LPane& AddSubPane(std::unique_ptr<LPane> pane);

    [[nodiscard]] const std::vector<std::unique_ptr<LPane>>& SubPanes() const { return m_subPanes; }

    [[nodiscard]] LPane* FindPaneByID(PaneIDT id) override;
    void FinishCreate() override;
    void BuildPeer(QWidget* parent) override;

    /// Changes the text of the pane with the id; nothing happens when there is none.
    void SetDescriptorForPaneID(PaneIDT id, const LStr255& text);
    [[nodiscard]] LStr255 GetDescriptorForPaneID(PaneIDT id);

protected:
    void FrameChanged() override;

private:
    std::vector<std::unique_ptr<LPane>> m_subPanes;
    int m_laidOutWidth = CalcLocalFrameRect().Width();  ///< the size that the subpanes' frames belong to
    int m_laidOutHeight = CalcLocalFrameRect().Height();
};

/// The pane inside `view` with the id, if it is a `T`; else null.
template <typename T>
[[nodiscard]] T* FindPane(LView& view, PaneIDT id) {
    return dynamic_cast<T*>(view.FindPaneByID(id));
}
