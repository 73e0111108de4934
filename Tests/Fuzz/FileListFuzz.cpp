#include "CoreClasses/CFileList.h"
#include "Fuzz/FuzzSupport.h"
#include "Support/TemporaryFolder.h"

#include <algorithm>
#include <fstream>

// The input is the content of a file of names.

namespace {

using Fuzz::Require;

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

/// Has the list read a file of that content; answers its names, which it keeps.
std::vector<std::string> Read(CFileList& list, const std::string& content) {
    static const TemporaryFolder folder;
    std::ofstream(folder.Native("list"), std::ios::binary) << content;
    static const std::string colon = folder.Colon("list");
    Require(list.AddFilesFromFileList(colon.c_str()), "a file that is there is read");
    std::vector<std::string> names;
    for (const CString& name : list.Names()) {
        names.emplace_back(name.View());
    }
    return names;
}

}  // namespace

void Fuzz::Run(const std::string& input) {
    CFileList list;
    list.Init();
    const std::vector<std::string> names = Read(list, input);
    Require(names == NamesIn(input), "the words of the file are its names", input);
    CString name;
    std::string written;
    for (std::size_t i = 0; i < 2 * names.size(); ++i) {
        list.GetNextFileThreadSafe(name);
        Require(name == names[i % names.size()], "names are handed out in turn", name.View());
        written += i < names.size() ? std::string(name.View()) + '\n' : "";
    }
    for (std::size_t left = names.size(); left > 0; --left) {
        Require(list.RemoveFileThreadSafe(name) && name == names[left - 1], "the last name is taken out");
    }
    Require(!list.RemoveFileThreadSafe(name) && list.IsEmpty(), "an emptied list is empty");
    Require(Read(list, written) == names, "names that are written can be read again", written);
}
