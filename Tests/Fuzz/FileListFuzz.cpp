#include "CoreClasses/CFileList.h"
#include "Fuzz/FuzzSupport.h"
#include "Support/TemporaryFolder.h"

#include <algorithm>
#include <fstream>

// The input is the content of a file of names.

namespace {

/// The words of a text as names: a word comes apart at 400 bytes, a name ends at a NUL and after 255 bytes.
std::vector<std::string> NamesIn(std::string text) {
    std::vector<std::string> names;
    std::replace_if(
        text.begin(), text.end(), [](char c) { return c >= '\t' && c <= '\r'; }, ' ');
    for (std::string word : Fuzz::Split(text, ' ')) {
        for (; !word.empty(); word.erase(0, 400)) {
            names.push_back(std::string(word.substr(0, 400).c_str()).substr(0, 255));
        }
    }
    std::erase(names, "");
    return names;
}

}  // namespace

void Fuzz::Run(const std::string& input) {
    static const TemporaryFolder folder;
    std::ofstream(folder.Native("list"), std::ios::binary) << input;
    CFileList list;
    list.Init();
    Fuzz::Require(list.AddFilesFromFileList(folder.Colon("list").c_str()), "a file that is there is read");
    std::vector<std::string> names;
    for (const CString& name : list.Names()) {
        names.emplace_back(name.View());
    }
    Fuzz::Require(names == NamesIn(input), "the words of the file are its names", input);
}
