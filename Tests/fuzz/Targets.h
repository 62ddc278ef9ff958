#pragma once

#include "assistant/Kesto.h"
#include "assistant/SkillStore.h"
#include "core/AddressResolution.h"
#include "core/Bookmarks.h"
#include "core/Records.h"
#include "core/TabGroup.h"
#include "fakes/FakeUserDefaults.h"
#include "foundation/json/JsonSurrogates.h"
#include "foundation/text/Text.h"
#include "import/formats/BookmarksHtml.h"
#include "import/formats/ChromiumBookmarks.h"
#include "import/formats/GnomeWebBookmarks.h"
#include "import/formats/ImportedPage.h"
#include "import/formats/SafariBookmarks.h"
#include "import/Importer.h"
#include "pagetools/ReaderExtraction.h"
#include "pagetools/ReaderText.h"
#include "platform/linux/foreign/LinuxForeignFiles.h"
#include "platform/model/ChatStream.h"
#include "platform/model/EngineMessages.h"
#include "platform/model/GgufFile.h"
#include "platform/model/ModelFile.h"
#include "platform/model/ModelList.h"
#include "platform/model/SocketOwner.h"
#include "platform/linux/update/UpdateArchive.h"
#include "platform/TemporaryFolder.h"
#include "search/answers/PageReduction.h"
#include "search/answers/ResultsPage.h"
#include "search/answers/SearchAnswer.h"
#include "search/answers/SearchAnswerCard.h"
#include "search/Bang.h"
#include "search/SearchSuggester.h"
#include "shell/WindowPlacement.h"
#include "site/downloads/DownloadName.h"
#include "site/Favicons.h"
#include "site/icons/PageIcons.h"
#include "site/permissions/SitePermissions.h"
#include "update/PlainPath.h"
#include "update/SignedText.h"
#include "update/UpdateRelease.h"
#include "update/UpdateServer.h"

#include <sys/mman.h>
#include <unistd.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

/// What is done with input from a fuzzer or from its corpus. Each function gives the rule that
/// the input breaks, or an empty text.
namespace orvu::fuzz {

/// Whatever decodes can be encoded, and decodes to the same value again.
template <class Record>
std::string keepsRecords(std::string_view input, std::string_view name) {
    const auto records = decodeRecords<Record>(input);
    if (!records) return {};
    const auto written = encodeRecords(*records);
    if (!written) return std::string{name} + " was read and can't be written";
    if (decodeRecords<Record>(*written) != records) return std::string{name} + " changed";
    return {};
}

inline std::string jsonRecords(std::string_view input) {
    std::string broken = keepsRecords<Visit>(input, "Visit");
    broken += keepsRecords<SavedTab>(input, "SavedTab");
    broken += keepsRecords<Parked>(input, "Parked");
    broken += keepsRecords<TabGroup>(input, "TabGroup");
    broken += keepsRecords<Profile>(input, "Profile");
    broken += keepsRecords<BookmarkStore::Bookmark>(input, "Bookmark");
    broken += keepsRecords<KestoSkill>(input, "KestoSkill");
    return broken;
}

inline std::string resolve(std::string_view input) {
    FakeUserDefaults defaults;
    const auto url = resolveAddress(input, Settings{defaults});
    const bool blank = trimmed(input, TrimSet::whitespacesAndNewlines).empty();
    if (!url) return blank ? "" : "typed text leads nowhere";
    if (blank) return "blank text leads somewhere";
    if (Url::parse(url->absoluteString()) != url) return "the address does not parse again";
    const auto scheme = url->scheme();
    if (scheme == "file" || scheme == "about") return {};
    if (scheme != "http" && scheme != "https") return "the scheme may not open";
    const auto behind = url->absoluteString().find_first_not_of('/', scheme.size() + 1);
    return behind != std::string::npos ? "" : "a web address with nothing behind its scheme";
}

inline std::string bang(std::string_view input) {
    const auto parsed = Bang::parse(input);
    if (parsed && parsed->query.empty()) return "the query is empty";
    const std::string_view query = parsed ? std::string_view{parsed->query} : input;
    for (const Bang& each : Bang::all) {
        const auto url = each.expand(query);
        if (!url) return "a search has no address";
        if (!url->query()) return "the search is lost";
        const auto encoded = url->query()->substr(url->query()->rfind('=') + 1);
        if (isWellFormed(query) && percentDecoded(encoded) != query) return "the search changed";
    }
    return {};
}

inline std::string url(std::string_view input) {
    const auto parsed = Url::parse(input);
    if (!parsed) return {};
    if (!isWellFormed(input)) return "an address is no UTF-8";
    if (parsed->absoluteString() != input) return "the text is not kept";
    const auto again = Url::parse(parsed->absoluteString());
    if (again != parsed) return "the address does not parse again";
    if (std::hash<Url>{}(*again) != std::hash<Url>{}(*parsed)) return "equal ones hash apart";
    if (again->scheme() != parsed->scheme() || again->host() != parsed->host() ||
        again->path() != parsed->path() || again->query() != parsed->query()) {
        return "the parts of equal addresses differ";
    }
    if (!isWellFormed(parsed->path())) return "the path is no UTF-8";
    if (parsed->host() && !isWellFormed(*parsed->host())) return "the host is no UTF-8";
    if (!isWellFormed(siteName(*parsed))) return "the name of the site is no UTF-8";
    if (isWebUrl(*parsed) && parsed->scheme().empty()) return "a web address without a scheme";
    return {};
}

/// The answer of the script that asks a page for its icons.
inline std::string iconLinks(std::string_view input) {
    const auto page = Url::parse("https://a.example/page");
    const ScriptResult answer{ScriptResult::Kind::json, std::string{input}};
    const auto found = PageIcons::candidates(answer, *page);
    if (found.empty() || found.size() > PageIcons::limit + 1) return "the number is wrong";
    const bool ends = found.back().absoluteString() == "https://a.example/favicon.ico";
    return ends ? "" : "the site's own icon is not the last";
}

/// What sites may do, as it is stored.
inline std::string permissionsJson(std::string_view input) {
    FakeUserDefaults defaults;
    defaults.setData(SitePermissions::key, input);
    SitePermissions permissions{defaults};
    auto expected = permissions.choices();
    const auto host = input.substr(0, 64);
    if (!isWellFormed(host)) return {};
    permissions.set(SitePermissions::Choice::block, CaptureKind::camera, host,
                    Persistence::persistent);
    expected.insert_or_assign(SitePermissions::choiceKey(CaptureKind::camera, host),
                              SitePermissions::Choice::block);
    return SitePermissions{defaults}.choices() == expected ? "" : "the choices changed";
}

/// The person's own skills, as they are stored.
inline std::string kestoSkills(std::string_view input) {
    FakeUserDefaults defaults;
    defaults.setData(SkillStore::key, input);
    SkillStore skills{defaults};
    auto expected = skills.custom();
    if (const auto added = skills.add("fuzzed", input.substr(0, 64))) expected.push_back(*added);
    if (skills.custom() != expected) return "the skills changed";
    if (!isWellFormed(input.substr(0, 64)) || expected.empty()) return {};
    return SkillStore{defaults}.custom() == expected ? "" : "the skills were not kept";
}

/// A page's text in a question to the assistant.
inline std::string kestoPrompt(std::string_view input) {
    const std::string text{input};
    const std::string prompt = Kesto::prompt("Why?", {{text, text, text}});
    constexpr std::string_view begin = "<pages>\n";
    constexpr std::string_view end = "\n</pages>\n\nMy question: Why?";
    if (!prompt.starts_with(begin) || !prompt.ends_with(end)) return "the block is broken";
    const auto json = std::string_view{prompt}.substr(begin.size());
    const auto block = json.substr(0, json.size() - end.size());
    if (block.find_first_of("<>\n") != std::string_view::npos) return "a page can end its block";
    const auto document = JsonDocument::parse(block);
    const auto pages = document ? document->root().array() : std::nullopt;
    if (!pages || pages->size() != 1) return "the block is not one page";
    const auto known = pages->front().field("text");
    const auto wanted = wellFormed(firstCharacters(text, Kesto::textBudget));
    return known && known->text() == wanted ? "" : "the text changed";
}

/// The answer of the script that takes an article out of a page.
inline std::string readerAnswer(std::string_view input) {
    const std::string json = withLoneSurrogatesReplaced(std::string{input});
    if (json.size() != input.size()) return "halves were replaced by something longer";
    const ReaderExtraction::Page page{*Url::parse("https://a.example/"), "Tab", "a.example"};
    const auto article = ReaderExtraction::article({ScriptResult::Kind::json, json}, page);
    if (!article) return {};
    if (article->minutes < 1) return "it takes no time to read";
    const bool repeats = !article->blocks.empty() && article->blocks[0].kind == "h1" &&
                         article->blocks[0].text == article->title;
    if (repeats && !input.contains("h1")) return "a heading came from nowhere";
    for (const ReaderPiece& piece : readerPieces(*article)) {
        if (!isWellFormed(piece.text)) return "a text is no UTF-8";
        if (piece.text.contains('\0')) return "a text has a NUL";
    }
    return {};
}

/// The answer of the script that reads a search engine's page.
inline std::string resultsAnswer(std::string_view input) {
    const std::string json = withLoneSurrogatesReplaced(std::string{input});
    const auto results = ResultsPage::results({ScriptResult::Kind::json, json});
    if (results.size() > ResultsPage::maxResults) return "there are too many";
    if (results.size() > static_cast<std::size_t>(std::ranges::count(json, '['))) {
        return "there are more than were told of";
    }
    for (const FoundResult& each : results) {
        if (each.title.empty()) return "a title is empty";
        if (!isWellFormed(each.title) || !isWellFormed(each.snippet)) return "a text is no UTF-8";
        // A unit of UTF-16 is never more than three bytes.
        if (each.title.size() > 3 * ResultsPage::maxTitle) return "a title is too long";
        if (each.snippet.size() > 3 * ResultsPage::maxSnippet) return "a snippet is too long";
        if (Url::parse(each.url.absoluteString()) != each.url) return "an address doesn't parse";
        if (each.shown && Url::parse(each.shown->absoluteString()) != each.shown) {
            return "a shown address doesn't parse";
        }
    }
    return {};
}

/// What a model says of search results, and how it is shown.
inline std::string searchReply(std::string_view input) {
    const auto reply = SearchAnswer::reply(input);
    if (reply.answer.contains("Next:")) return "a mark is left in the answer";
    if (reply.followUps.size() > SearchAnswer::followUpsLimit) return "there are too many searches";
    for (const std::string& each : reply.followUps) {
        if (each.empty()) return "a search is empty";
        if (characterCount(each) >= SearchAnswer::followUpLimit) return "a search is too long";
    }
    std::size_t shown = 0;
    for (const auto& run : SearchAnswerCard::cited(reply.answer)) shown += run.text.size();
    if (shown > reply.answer.size()) return "more is shown than was said";
    return {};
}

/// What a search engine answers.
inline std::string suggestions(std::string_view input) {
    const auto texts = SearchSuggester::parse(input);
    if (texts.size() > SearchSuggester::maxPredictions) return "there are too many";
    for (auto each = texts.begin(); each != texts.end(); ++each) {
        if (!isWellFormed(*each)) return "a text is no UTF-8";
        if (each->empty() || trimmed(*each, TrimSet::whitespaces) != *each)
            return "a text is blank";
        const auto isSame = [&](const auto& other) {
            return lowercased(other) == lowercased(*each);
        };
        if (std::any_of(texts.begin(), each, isSame)) return "a text is there twice";
    }
    return {};
}

/// The file name of a host's icon.
inline std::string iconFile(std::string_view input) {
    const std::string key = FaviconStore::key(input.substr(0, 512));
    const std::string name = FaviconStore::fileName(key);
    if (!name.ends_with(".png")) return "the name has another ending";
    if (name.contains('/') || name.contains('\0')) return "the name leaves its folder";
    return isWellFormed(name) ? "" : "the name is no UTF-8";
}

/// The name of a file that a server suggests to call so, and of the next ones of that name.
inline std::string downloadName(std::string_view input) {
    const std::string wanted = DownloadName::safe(input);
    std::vector<std::string> taken;
    const auto isTaken = [&](const std::string& name) {
        return std::ranges::find(taken, name) != taken.end();
    };
    for (int copy = 0; copy < 11; ++copy) {
        const std::string name = DownloadName::free(wanted, isTaken);
        if (name.empty() || name.starts_with('.')) return "the file is hidden";
        if (name.contains('/') || name.contains('\0')) return "the name leaves its folder";
        if (name.size() > DownloadName::maxBytes) return "the name is too long";
        if (!isWellFormed(name)) return "the name is no UTF-8";
        if (isTaken(name)) return "the name is taken";
        taken.push_back(name);
    }
    return {};
}

/// An answer of a model server in pieces of a size; the reply, or the failure.
inline std::string modelReply(ModelProtocol protocol, std::string_view input, std::size_t piece) {
    ChatStream stream{protocol};
    for (; !input.empty(); input.remove_prefix(std::min(piece, input.size()))) {
        stream.add(input.substr(0, piece));
    }
    const bool isComplete = stream.end() == ChatStream::State::complete;
    return isComplete ? "reply " + stream.reply() : "failure " + sentence(stream.error());
}

/// What a model server says, as any of its answers.
inline std::string modelServer(std::string_view input) {
    for (const auto protocol : {ModelProtocol::ollama, ModelProtocol::openAI}) {
        const std::string whole = modelReply(protocol, input, input.size() + 1);
        if (!isWellFormed(whole)) return "a reply is no UTF-8";
        if (whole == "reply ") return "a reply is empty";
        for (const std::size_t piece : {1U, 3U, 7U}) {
            if (modelReply(protocol, input, piece) != whole) return "a cut changes the reply";
        }
    }
    for (const auto& models :
         {ollamaModels(input), loadedOllamaModels(input), openAIModels(input)}) {
        const auto chosen = models ? chosenModel(*models) : std::nullopt;
        if (chosen && chosen->name.empty()) return "a model without a name is chosen";
        if (chosen && !chosen->canAnswer) return "a model that can't answer is chosen";
    }
    const std::string told = sentence(errorOfAnswer(500, input));
    if (!isWellFormed(told) || told.contains('\n')) return "a failure is more than a line";
    const SocketTables tables{std::string{input}, std::string{input}};
    const bool isTrusted = serverOwner(tables, {}, {}, 1) == ServerOwner::trusted;
    return isTrusted && !input.contains(':') ? "a table without an address is trusted" : "";
}

/// A page of the web, as what it says.
inline std::string pageReduction(std::string_view input) {
    const std::string page{input.substr(0, 100'000)};
    const std::string text = PageReduction::text(page);
    if (!isWellFormed(text)) return "the text is no UTF-8";
    if (characterCount(text) > PageReduction::maxCharacters) return "the text is too long";
    if (text.contains("  ")) return "two blanks stand beside each other";
    if (text.find_first_of("\t\n\v\f\r") != std::string::npos) return "a blank is no space";
    const bool isPlain = text.find_first_of("<&") == std::string::npos;
    if (isPlain && PageReduction::text(text) != text) return "plain text is reduced once more";
    const std::string behindBlank = PageReduction::text(" " + page);
    if (PageReduction::text("<!-- a -->" + page) != behindBlank) return "a comment says something";
    const bool isSilent = PageReduction::text("<nav>a<b>c</nav>" + page) == behindBlank;
    return isSilent ? "" : "an element that is left out says something";
}

/// What an import gives of bookmarks that stand in another browser's file.
inline std::string importedBookmarks(const std::vector<BookmarkStore::Entry>& found) {
    for (const auto& [url, title] : found) {
        if (!isWebUrl(url)) return "a bookmark leads to no web page";
        if (!canBeStored(url)) return "an address is too long to be stored";
        if (!isWellFormed(title)) return "a title is no UTF-8";
        if (characterCount(title) > 1000) return "a title is too long";
    }
    return {};
}

/// A file "Bookmarks" of Chromium's family.
inline std::string chromiumBookmarksFile(std::string_view input) {
    const auto found = chromiumBookmarks(input);
    JsonWriter writer;
    writer.beginObject().key("roots").beginObject().key("other").beginObject();
    writer.key("children").beginArray();
    for (const auto& [url, title] : found) {
        writer.beginObject().key("type").value("url").key("url").value(url);
        writer.key("name").value(title).endObject();
    }
    const auto written = std::move(writer.endArray().endObject().endObject().endObject()).finish();
    if (!written || chromiumBookmarks(*written) != found) return "the bookmarks changed";
    return importedBookmarks(found);
}

/// A property list of bookmarks.
inline std::string safariBookmarksFile(std::string_view input) {
    return importedBookmarks(safariBookmarks(input));
}

/// The file of a browser's database: each of the readers takes it for its own.
inline std::string foreignDatabase(std::string_view input) {
    static const TemporaryFolder folder;
    static const BrowserImporter importer{
        std::make_shared<LinuxForeignFiles>(folder.path() / "caches"), {}};
    using Kind = BrowserKind;
    for (const Kind kind : {Kind::chromium, Kind::firefox, Kind::safari, Kind::gnomeWeb}) {
        const auto profile = folder.path() / rawValue(kind);
        std::filesystem::create_directories(profile);
        std::ofstream{profile / probeFile(kind), std::ios::binary | std::ios::trunc} << input;
        const auto result = importer.read(
            {.id = "x", .name = "X", .host = "", .kind = kind, .folder = profile}, {});
        if (result.visits.size() > 5000) return "more visits than were asked for";
        for (const Visit& visit : result.visits) {
            if (!web(visit.url.absoluteString())) return "a visit of no web page";
        }
        if (std::string rule = importedBookmarks(result.bookmarks); !rule.empty()) return rule;
    }
    return "";
}

/// A bookmarks file that a browser exported.
inline std::string bookmarksHtmlFile(std::string_view input) {
    const auto found = bookmarksInHtml(input);
    std::string written;
    for (const auto& [url, title] : found) {
        if (title.empty()) return "a title is empty";
        // Its end quote would begin an address of its own.
        if (lowercased(url.absoluteString()).ends_with("href=")) return importedBookmarks(found);
        written += "<DT><a href=\"" + url.absoluteString() + "\" ADD_DATE=\"1\">";
        // The address stands for a missing title, and may hold what no title can.
        const bool isAddress = title == importedTitle(url.absoluteString());
        written += (isAddress ? "" : replacingAll(title, "&", "&amp;")) + "</a>\n";
    }
    if (bookmarksInHtml(written) != found) return "the bookmarks changed";
    return importedBookmarks(found);
}

/// A file "bookmarks.gvdb" of GNOME Web.
inline std::string gnomeWebBookmarksFile(std::string_view input) {
    return importedBookmarks(gnomeWebBookmarks(input));
}

inline std::string windowFrame(std::string_view input) {
    const auto frame = WindowFrame::parse(input);
    if (!frame) return {};
    if (WindowFrame::parse(frame->string()) != frame) return "the frame changed";
    const auto [width, height] = WindowPlacement::minimumSize;
    if (frame->size.width < width || frame->size.height < height) return "the frame is too small";
    return frame->size.width > 16384 || frame->size.height > 16384 ? "the frame is too large" : "";
}

/// What a server of updates offers.
inline std::string updateManifest(std::string_view input) {
    const auto release = UpdateRelease::parse(input);
    if (!release) return {};
    if (input.size() > UpdateRelease::longest) return "a manifest is too long";
    if (!isWellFormed(release->version)) return "a version is no UTF-8";
    const UpdateServer server{"updates.example"};
    if (!server.serves(release->url)) return {};
    const auto signedText = UpdateServer::signedText(release->url);
    if (!signedText || !server.serves(*signedText)) return "the signed text is elsewhere";
    if (release->url.host() != "updates.example") return "an archive of another host counts";
    if (release->url.scheme() != "https") return "an archive without https counts";
    return release->url.query() ? "an address with a query counts" : "";
}

/// What the maker signs of an update, with or without its signature.
inline std::string signedText(std::string_view input) {
    const auto message = SignedMessage::split(input);
    if (message && message->string() != input) return "a message has two ways to be written";
    const auto text = SignedText::parse(message ? message->text : input);
    if (!text) return {};
    if (text->string() != (message ? message->text : input)) return "a text changed";
    std::vector<std::string> folded;
    for (const auto& file : text->files) {
        if (!isPlainPath(file.path)) return "a path isn't plain";
        if (text->file(file.path) != &file) return "a file isn't found";
        if (text->hasFolder(file.path)) return "a file is a folder";
        folded.push_back(foldedPath(file.path));
    }
    std::ranges::sort(folded);
    const bool isTwice = std::ranges::adjacent_find(folded) != folded.end();
    return isTwice ? "two names differ by case alone" : "";
}

/// The archive of an update.
inline std::string updateArchive(std::string_view input) {
    const int file = memfd_create("archive", MFD_CLOEXEC);
    const bool isWritten =
        write(file, input.data(), input.size()) == static_cast<ssize_t>(input.size());
    const auto verdict = UpdateArchive{file}.verdict();
    const bool isSame = UpdateArchive{file}.verdict() == verdict;
    close(file);
    if (!isWritten) return "the archive can't be kept";
    return isSame ? "" : "it is read in two ways";
}

/// The head of a model's file.
inline std::string modelFile(std::string_view input) {
    const auto header = GgufHeader::read(fileBytes(input));
    if (header != GgufHeader::read(fileBytes(input))) return "it is read in two ways";
    if (!header) return {};
    if (header->name.size() > input.size()) return "it has a longer name than itself";
    if (header->isOfChatModel() && header->architecture.empty()) return "a model of no kind";
    // As the file ends earlier it is another one, or none.
    const auto half = GgufHeader::read(fileBytes(input.substr(0, input.size() / 2)));
    return half && half->name != header->name ? "half of it has another name" : "";
}

/// What the process of a model says, what is remembered of models, and what another program lists.
inline std::string modelMessages(std::string_view input) {
    EngineAnswerReader whole;
    const auto answers = whole.add(input);
    std::vector<EngineAnswer> pieces;
    EngineAnswerReader reader;
    for (const char each : input) {
        for (auto& answer : reader.add({&each, 1})) pieces.push_back(std::move(answer));
    }
    if (reader.isBroken() != whole.isBroken()) return "a cut changes whether it is broken";
    if (!whole.isBroken() && pieces != answers) return "a cut changes the answers";
    for (const auto& each : answers) {
        if (const auto told = each.description(); told && !isWellFormed(told->name)) {
            return "a name is no UTF-8";
        }
    }
    const auto models = decodedModels(input);
    if (decodedModels(encodedModels(models)) != models) return "the list of models changes";
    for (const auto& each : modelsOfManifest(input)) {
        if (each.size() != 71 || each.contains('/')) return "a manifest leads elsewhere";
    }
    return {};
}

}  // namespace orvu::fuzz
