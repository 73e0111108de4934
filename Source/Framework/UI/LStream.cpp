#include "Framework/UI/LStream.h"

#include "Framework/Base/LException.h"

#include <QByteArray>
#include <QXmlStreamReader>

#include <charconv>

// Parsing is LStreamReader's; the rest answers a pane's constructor.

namespace {

[[noreturn]] void ThrowUnreadable(const LStream& stream, const std::string& attribute, const std::string& text) {
    throw LResourceException(stream.Description() + ": the attribute " + attribute + " cannot be \"" + text + "\"");
}

}  // namespace

/// Turns the reader's tokens into records.
class LStreamReader {
public:
    LStreamReader(std::string_view xml, std::string name)
        : m_xml(QByteArray(xml.data(), static_cast<qsizetype>(xml.size()))), m_name(std::move(name)) {}

    LStream Read() {
        if (!m_xml.readNextStartElement()) {
            Fail();
        }
        LStream root = ReadElement(0);
        while (!m_xml.atEnd()) {
            m_xml.readNext();
        }
        if (m_xml.hasError()) {
            Fail();
        }
        return root;
    }

private:
    /// Deeper nesting than any window has; a bound for the recursion.
    static constexpr int kDeepest = 32;

    LStream ReadElement(int depth) {
        LStream stream;
        stream.m_layout = m_name;
        stream.m_classID = m_xml.name().toString().toStdString();
        for (const QXmlStreamAttribute& attribute : m_xml.attributes()) {
            stream.m_attributes[attribute.name().toString().toStdString()] = attribute.value().toString().toStdString();
        }
        if (depth == kDeepest) {
            throw LResourceException(stream.Description() + ": nested too deeply");
        }
        while (m_xml.readNextStartElement()) {
            stream.m_subPanes.push_back(ReadElement(depth + 1));
        }
        if (m_xml.hasError()) {
            Fail();
        }
        return stream;
    }

    [[noreturn]] void Fail() const {
        throw LResourceException(m_name + ", line " + std::to_string(m_xml.lineNumber()) + ": " +
                                 m_xml.errorString().toStdString());
    }

    QXmlStreamReader m_xml;
    std::string m_name;
};

LStream LStream::Parse(std::string_view xml, const std::string& name) {
    return LStreamReader(xml, name).Read();
}

std::string LStream::Text(const std::string& attribute, const std::string& otherwise) const {
    const auto found = m_attributes.find(attribute);
    return found != m_attributes.end() ? found->second : otherwise;
}

std::int32_t LStream::Number(const std::string& attribute, std::int32_t otherwise) const {
    if (!Has(attribute)) {
        return otherwise;
    }
    const std::string text = Text(attribute);
    std::int32_t number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (error != std::errc() || end != text.data() + text.size()) {
        ThrowUnreadable(*this, attribute, text);
    }
    return number;
}

bool LStream::Flag(const std::string& attribute, bool otherwise) const {
    if (!Has(attribute)) {
        return otherwise;
    }
    const std::string text = Text(attribute);
    if (text != "yes" && text != "no") {
        ThrowUnreadable(*this, attribute, text);
    }
    return text == "yes";
}

std::string LStream::Description() const {
    return m_layout + ", pane " + Text("id", "without id") + " (" + m_classID + ")";
}
