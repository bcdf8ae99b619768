#include "host/host_facts.h"

#include "foundation/code_page.h"
#include "foundation/filesys.h"
#include "foundation/message_catalogue.h"
#include "foundation/text.h"

std::optional<std::string>
serverFolderOf(const std::string& folder, const std::function<bool(const std::string&)>& writable,
               const std::function<std::optional<std::string>(const std::string&)>& shortPath) {
    if (writable(folder)) {
        return folder;
    }
    std::optional<std::string> shortForm = shortPath(folder);
    if (!shortForm || !writable(*shortForm)) {
        return std::nullopt;
    }
    return shortForm;
}

std::optional<std::string> serverFolder() {
    return serverFolderOf(installationPath(), codepage::writableInSystemCodePage,
                          [](const std::string& path) { return filesys::shortPathOf(path); });
}

std::wstring folderNotWritableText(const std::string& folder, unsigned codePage) {
    // In one pass, so that a "%2" in the folder's name stays as it is.
    const std::wstring words = fromCp1251(panelMessages.text(panelmsg::folderNotWritable));
    const std::wstring name = utf8ToUtf16(filesys::systemPathForm(folder));
    std::wstring text;
    for (std::size_t index = 0; index < words.size(); ++index) {
        if (words[index] == L'%' && index + 1 < words.size() &&
            (words[index + 1] == L'1' || words[index + 1] == L'2')) {
            text += words[index + 1] == L'1' ? name : std::to_wstring(codePage);
            ++index;
        } else {
            text += words[index];
        }
    }
    return text;
}
