#pragma once

#include "Framework/UI/LPane.h"

#include <string>

/// A text that the user reads. Where it can be a caption, a value and so on it differs in colour and weight only.
///
/// Attributes of its record besides a pane's:
/// - "text";
/// - "style": "caption" (the default), "value", "strong", "alarm" or "quiet";
/// - "align": "left" (the default), "right" or "center";
/// - "elide": what gives way when the text is too long, "none" (the default), "right" or "middle"; the tool tip then is
/// the whole text;
/// - "wrap": the text takes as many lines as it needs, from the top;
/// - "for": the id of the pane that this text names: the pane gets the keyboard by the caption's key, and a screen
/// reader says the
///   caption's text for panes in it that have no accessible name of their own;
/// - "key": a key for that, e.g. "Alt+P".
///
/// An accessible name of its own is said before the text: "Path: Media:Tests:".
class LCaption : public LPane {
public:
    explicit LCaption(LStream* stream);

    void SetDescriptor(const LStr255& text) override;
    [[nodiscard]] LStr255 GetDescriptor() const override { return m_text; }

    enum class Style { Caption, Value, Strong, Alarm, Quiet };
    enum class Align { Left, Right, Center };
    enum class Elide { None, Right, Middle };

protected:
    void FinishCreateSelf() override;
    [[nodiscard]] std::unique_ptr<QWidget> MakePeer(QWidget* parent) override;
    void UpdatePeer() override;

private:
    void PushText();

    LStr255 m_text;
    Style m_style;
    Align m_align;
    Elide m_elide;
    bool m_wraps;
    PaneIDT m_namedPane;  ///< 0 for none
    std::string m_key;
    std::string m_description;  ///< of its record, for error texts
};
