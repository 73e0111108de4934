#include "Framework/UI/LayoutAttributes.h"

#include <QKeySequence>
#include <QString>

#include <sstream>

LResourceException LayoutAttributes::Unreadable(const LStream& stream, const std::string& attribute) {
    return LResourceException(stream.Description() + ": the attribute " + attribute + " cannot be \"" +
                              stream.Text(attribute) + "\"");
}

std::vector<LStr255> LayoutAttributes::Items(const LStream& stream) {
    std::vector<LStr255> items;
    std::istringstream texts(stream.Text("items"));
    for (std::string text; std::getline(texts, text, '|');) {
        items.emplace_back(std::string_view(text));
    }
    return items;
}

std::string LayoutAttributes::Key(const LStream& stream) {
    std::string text = stream.Text("key");
    const QKeySequence keys(QString::fromStdString(text), QKeySequence::PortableText);
    const bool isOneKey = keys.count() == 1 && keys[0].key() != Qt::Key_unknown;
    if (stream.Has("key") && !isOneKey) {
        throw Unreadable(stream, "key");
    }
    return text;
}

std::vector<std::int32_t> LayoutAttributes::Numbers(const LStream& stream, const std::string& attribute) {
    std::vector<std::int32_t> numbers;
    std::istringstream words(stream.Text(attribute));
    for (std::int32_t number = 0; words >> number;) {
        numbers.push_back(number);
    }
    if (!words.eof()) {
        throw Unreadable(stream, attribute);
    }
    return numbers;
}
