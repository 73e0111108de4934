#pragma once

#include <QWidget>

class LPane;

/// The widget of a pane that draws itself. Its paint event is the pane's `DrawSelf`, a click of the first button the
/// pane's `ClickSelf`, and a screen reader is told the pane's `AccessibleValue` (see `InstallPaneAccessibility`).
class PaneWidget : public QWidget {
public:
    /// `pane` owns this widget.
    PaneWidget(LPane& pane, QWidget* parent);

    [[nodiscard]] LPane& Pane() const { return m_pane; }

    /// Tells assistive programs that the pane's value has changed.
    void AnnounceValue();

protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;

private:
    LPane& m_pane;
};

/// Makes assistive programs see the values of panes that draw themselves; once for the process, after the application
/// object is there.
void InstallPaneAccessibility();
