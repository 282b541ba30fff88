#include "commands/PageBundle.h"

#include "base/Files.h"
#include "base/Names.h"
#include "model/PageParts.h"
#include "model/TourFiles.h"
#include "model/Workspace.h"

#include <algorithm>
#include <deque>
#include <map>
#include <set>
#include <utility>

namespace wendmark {

namespace {

/// Larger texts are taken as they are: nobody has written them by hand.
constexpr std::size_t longestText = 4'000'000;

std::string folderOf(const std::string& path, char separator) {
    const std::size_t end = path.rfind(separator);
    return end == std::string::npos ? std::string() : path.substr(0, end + 1);
}

/// "eel.png" becomes "eel-2.png".
std::string numbered(const std::string& name, int number) {
    const std::size_t dot = std::min(name.rfind('.'), name.size());
    return name.substr(0, dot) + "-" + std::to_string(number) + name.substr(dot);
}

class Bundler final {
public:
    Bundler(const Workspace& workspace, const std::string& path, const std::string& name,
            const std::vector<AddedFile>& others)
        : m_workspace(workspace), m_others(others), m_folder(folderOf(path, pathSeparator)) {
        m_bundle.page = {path, name, {}};
        m_taken.insert(lowerCase(name));
    }

    PageBundle bundle() {
        open({}, files::read(m_bundle.page.source).bytes);
        while (!m_texts.empty()) {
            Text& text = m_texts.back();
            if (text.next < text.parts.references.size())
                meet(text.parts.references[text.next++].path);
            else
                close();
        }
        return std::move(m_bundle);
    }

private:
    /// The page, or a style sheet, that is being read; those above it on the stack have led to it.
    struct Text {
        std::string path; ///< Empty: the page.
        std::string bytes;
        PageParts parts;
        std::size_t next = 0; ///< Of its references.
    };

    void open(const std::string& path, std::string bytes) {
        Text text{path, std::move(bytes), {}};
        if (text.bytes.size() <= longestText)
            text.parts =
                path.empty() ? partsOfPage(text.bytes) : partsOfStyleSheet(text.bytes, folderOf(path, '/'));
        const std::vector<std::string>& elsewhere = text.parts.elsewhere;
        m_bundle.elsewhere.insert(m_bundle.elsewhere.end(), elsewhere.begin(), elsewhere.end());
        m_texts.push_back(std::move(text));
    }

    /// Its parts have names now. One that leads back to another one that is just being read keeps that name.
    void close() {
        const Text text = std::move(m_texts.back());
        m_texts.pop_back();
        std::optional<std::string> bytes = withPartNames(text.bytes, text.parts, m_names);
        if (bytes == text.bytes)
            bytes.reset();
        if (text.path.empty())
            m_bundle.page.bytes = std::move(bytes);
        else
            add(text.path, std::move(bytes));
    }

    void meet(const std::string& path) {
        if (!m_met.insert(path).second)
            return;
        const std::string source = m_folder + path;
        if (!files::canBeRead(source))
            m_bundle.missing.push_back(path);
        else if (!files::leadsInside(source, m_folder))
            m_bundle.elsewhere.push_back(path);
        else if (m_met.size() > mostPageParts)
            ++m_bundle.leftOut;
        else if (isStyleSheet(path))
            open(path, files::read(source).bytes);
        else
            add(path, std::nullopt);
    }

    void add(const std::string& path, std::optional<std::string> bytes) {
        AddedFile file{m_folder + path, {}, std::move(bytes)};
        bool isThere = false;
        file.name = freeName(file, lastPathPart(path, '/'), isThere);
        m_names[path] = file.name;
        m_bundle.parts.push_back({path, std::move(file), isThere});
    }

    std::string freeName(const AddedFile& file, const std::string& wanted, bool& isThere) {
        std::string name = wanted;
        for (int number = 2; !isFree(file, name, isThere); ++number)
            name = numbered(wanted, number);
        m_taken.insert(name);
        return name;
    }

    bool isFree(const AddedFile& file, const std::string& name, bool& isThere) const {
        isThere = false;
        if (m_taken.contains(name) || isReservedName(name) || m_workspace.isTemplateFile(name))
            return false;
        const auto other = std::find_if(m_others.begin(), m_others.end(),
                                        [&](const AddedFile& coming) { return coming.name == name; });
        if (other != m_others.end()) {
            isThere = other->source == file.source && other->bytes == file.bytes;
            return isThere;
        }
        const std::string present = m_workspace.workingFile(name);
        if (!files::canBeRead(present))
            return true;
        isThere = files::read(present).bytes == (file.bytes ? *file.bytes : files::read(file.source).bytes);
        return isThere;
    }

    const Workspace& m_workspace;
    const std::vector<AddedFile>& m_others;
    std::string m_folder;
    PageBundle m_bundle;
    std::deque<Text> m_texts; ///< References into it hold while it grows.
    std::set<std::string> m_met;
    std::set<std::string> m_taken;
    std::map<std::string, std::string> m_names; ///< By path.
};

} // namespace

bool PageBundle::needsMore() const {
    return page.bytes.has_value() ||
           std::any_of(parts.begin(), parts.end(), [](const Part& part) { return !part.isThere; });
}

std::vector<AddedFile> PageBundle::files() const {
    std::vector<AddedFile> all = {page};
    for (const Part& part : parts)
        all.push_back(part.file);
    return all;
}

PageBundle bundlePage(const Workspace& workspace, const std::string& path, const std::string& name,
                      const std::vector<AddedFile>& others) {
    return Bundler(workspace, path, name, others).bundle();
}

} // namespace wendmark
