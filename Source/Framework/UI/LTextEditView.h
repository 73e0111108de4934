#pragma once

#include "Framework/UI/LPane.h"

#include <optional>

/// A key pressed in a text, as far as panes care. Tab and lone modifiers move the focus or do nothing; they are not
/// told.
enum class EditKey { UpArrow, DownArrow, Other };

/// A stretch of a text between two of its characters; empty where only the cursor stands.
struct TextSelection {
    int start = 0;
    int end = 0;

    bool operator==(const TextSelection&) const = default;
};

/// One line of text that the user edits, with the clipboard, undo and input methods of the system. It holds at most 255
/// bytes; input beyond that is refused with a beep.
///
/// Attributes of its record besides a pane's: "text"; "digitsOnly" (the user can type digits and nothing else).
class LTextEditView : public LPane {
public:
    explicit LTextEditView(LStream* stream);
    /// For panes that other panes make themselves.
    explicit LTextEditView(const SPaneInfo& info);

    void SetDescriptor(const LStr255& text) override;
    [[nodiscard]] LStr255 GetDescriptor() const override { return m_text; }

    /// Positions outside the text are moved to its ends.
    void SetSelection(TextSelection selection);
    void SelectAll();
    [[nodiscard]] TextSelection GetSelection() const;

    /// Deletes as the backspace key does: the selection, or else the character before the cursor. It can be undone.
    void DeleteBackward();

    /// Colours in place of the program's own.
    void SetTextColors(const RGBColor& text, const RGBColor& back);

    /// Brings the widget's colours up to date; the widget says when the keyboard has come or gone.
    void PushColors();

    /// Comes before what the text itself does with the key. Answers whether that is to be left out.
    virtual bool HandleKeyPress(EditKey key);

protected:
    /// The user has changed the text.
    virtual void UserChangedText() {}

    [[nodiscard]] std::unique_ptr<QWidget> MakePeer(QWidget* parent) override;
    void UpdatePeer() override;

private:
    struct Colors {
        RGBColor text;
        RGBColor back;
    };

    void PutCursorAtEnd();
    void TakeEditedText();

    LStr255 m_text;
    bool m_takesDigitsOnly = false;
    TextSelection m_selection;  ///< while there is no peer; with one, the peer knows
    std::optional<Colors> m_colors;
};
