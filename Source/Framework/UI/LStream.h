#pragma once

#include "Platform/DrawingTypes.h"

#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <vector>

/// One pane's record of a window layout: what its constructor reads.
///
/// A layout is an XML text: an element for each pane, named by the pane's four-character class id, whose attributes are
/// the pane's settings and whose child elements are its subpanes. A missing attribute has the default that the reading
/// call names; one that cannot be read is a resource error that names layout, pane and attribute.
class LStream {
public:
    /// Reads a whole layout; its one root element is the window. `name` is for error texts. Throws
    /// `LResourceException`.
    [[nodiscard]] static LStream Parse(std::string_view xml, const std::string& name);

    [[nodiscard]] const std::string& ClassID() const { return m_classID; }
    [[nodiscard]] const std::vector<LStream>& SubPanes() const { return m_subPanes; }

    [[nodiscard]] bool Has(const std::string& attribute) const { return m_attributes.contains(attribute); }
    [[nodiscard]] std::string Text(const std::string& attribute, const std::string& otherwise = "") const;
    [[nodiscard]] std::int32_t Number(const std::string& attribute, std::int32_t otherwise = 0) const;
    /// "yes" or "no".
    [[nodiscard]] bool Flag(const std::string& attribute, bool otherwise = false) const;

    /// "layout 2128, pane 210 (Digi)", for error texts.
    [[nodiscard]] std::string Description() const;

private:
    friend class LStreamReader;

    std::string m_layout;
    std::string m_classID;
    std::map<std::string, std::string> m_attributes;
    std::vector<LStream> m_subPanes;
};
