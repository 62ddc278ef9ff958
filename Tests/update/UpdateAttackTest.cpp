#include "UpdateLab.h"

#include "fakes/FakeBackgroundWork.h"
#include "fakes/FakeUpdateTransport.h"
#include "fakes/FakeUserDefaults.h"
#include "fakes/VirtualMainLoop.h"
#include "platform/linux/update/LinuxUpdateInstaller.h"
#include "update/Updater.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

namespace orvu {
namespace {

using State = Updater::State;
using Kind = LabMember::Kind;

const std::string mismatch = "The download didn't match what updates.example published.";
const std::string notSigned = "The update isn't signed by Zarvo, so Orvu didn't install it.";
const std::string notUnpacked = "The update couldn't be unpacked.";
const std::string noApplication = "The update isn't a valid app.";
const std::string unreachable =
    "Couldn't reach updates.example. Check your connection and try again.";
const std::string upToDate = "up to date";

/// An update that somebody changed before or after it was signed, and what is said to it.
struct Attack {
    const char* name;
    std::string answer;
    std::function<void(LabUpdate&)> beforeSealing{};
    std::function<void(LabUpdate&)> afterSealing{};
};

void PrintTo(const Attack& attack, std::ostream* stream) { *stream << attack.name; }

/// The whole updater on a real folder, with a server that gives what it is told.
class UpdateAttackTest : public testing::Test {
protected:
    UpdateAttackTest() = default;

    /// Takes an offer as far as it goes, and gives what is said in the end.
    std::string take(const LabUpdate& update) {
        updater_.check(UserInitiated::yes);
        while (!transport_.open.empty() || background_.waiting() > 0) {
            if (!background_.doNext()) answerNext(update);
        }
        const State state = updater_.state.get();
        if (state.kind == State::Kind::upToDate) return upToDate;
        return state.kind == State::Kind::ready ? "ready" : state.text;
    }

    UpdateLab lab_;

private:
    void answerNext(const LabUpdate& update) {
        const auto request = transport_.open.front();
        std::string body = update.manifest;
        if (request.url == UpdateLab::archiveAddress) {
            writeLabFile(request.place, update.archive, 0600);
            body.clear();
        } else if (request.url.ends_with(".signed")) {
            body = update.message;
        }
        transport_.answer(request.url, {.body = body});
    }

    FakeUserDefaults defaults_;
    Settings settings_{defaults_};
    VirtualMainLoop loop_;
    FakeUpdateTransport transport_;
    FakeBackgroundWork background_;
    LinuxUpdateInstaller::Copy copy_ =
        LinuxUpdateInstaller::copyOf(lab_.application() / "bin/orvu");
    LinuxUpdateInstaller installer_{background_, copy_, UpdateKey::parse(UpdateLab::publicKey()),
                                    UpdateServer{UpdateLab::server}};
    Updater updater_{{defaults_, settings_, loop_, transport_, installer_},
                     UpdateServer{UpdateLab::server},
                     copy_.facts};
};

class UpdateAttackSuite : public UpdateAttackTest, public testing::WithParamInterface<Attack> {};

TEST_P(UpdateAttackSuite, IsRefusedAndLeavesTheDiskAsItWas) {
    const Attack& attack = GetParam();
    auto update = UpdateLab::update(12);
    if (attack.beforeSealing) attack.beforeSealing(update);
    UpdateLab::seal(update);
    if (attack.afterSealing) attack.afterSealing(update);
    const auto before = lab_.snapshot();

    EXPECT_EQ(take(update), attack.answer);

    EXPECT_EQ(lab_.snapshot(), before);
}

TEST_F(UpdateAttackTest, AnUpdateThatNobodyTouchedIsStaged) {
    auto update = UpdateLab::update(12);
    UpdateLab::seal(update);

    EXPECT_EQ(take(update), "ready");

    EXPECT_EQ(UpdateLab::snapshot(lab_.folder() / ".Orvu-update.app"), UpdateLab::wholeCopy(12));
    EXPECT_EQ(UpdateLab::snapshot(lab_.application()), UpdateLab::wholeCopy(10));
    EXPECT_FALSE(exists(lab_.folder() / ".Orvu-update.work"));
}

TEST_F(UpdateAttackTest, ModesOfTheArchiveAreMadePlain) {
    auto update = UpdateLab::update(12);
    for (auto& each : update.members) each.mode |= each.kind == Kind::folder ? 0022 : 0066;
    UpdateLab::seal(update);

    EXPECT_EQ(take(update), "ready");

    EXPECT_EQ(UpdateLab::snapshot(lab_.folder() / ".Orvu-update.app"), UpdateLab::wholeCopy(12));
}

TEST_F(UpdateAttackTest, AnOlderStagedCopyIsReplaced) {
    lab_.placeStaged(11);
    auto update = UpdateLab::update(12);
    UpdateLab::seal(update);

    EXPECT_EQ(take(update), "ready");

    EXPECT_EQ(UpdateLab::snapshot(lab_.folder() / ".Orvu-update.app"), UpdateLab::wholeCopy(12));
}

TEST_F(UpdateAttackTest, ALinkInThePlaceOfTheWorkFolderLeadsNowhere) {
    const UpdateLab elsewhere;
    const auto before = elsewhere.snapshot();
    std::filesystem::create_symlink(elsewhere.folder(), lab_.folder() / ".Orvu-update.work");
    std::filesystem::create_symlink(elsewhere.application(), lab_.folder() / ".Orvu-update.app");
    auto update = UpdateLab::update(12);
    UpdateLab::seal(update);

    EXPECT_EQ(take(update), "ready");

    EXPECT_EQ(elsewhere.snapshot(), before);
    EXPECT_EQ(UpdateLab::snapshot(lab_.folder() / ".Orvu-update.app"), UpdateLab::wholeCopy(12));
}

TEST_F(UpdateAttackTest, AFolderThatOthersCanWriteIsNotUsed) {
    chmod(lab_.folder().c_str(), 0777);
    const auto before = lab_.snapshot();
    auto update = UpdateLab::update(12);
    UpdateLab::seal(update);

    EXPECT_EQ(take(update), update_words::bySystem);

    EXPECT_EQ(lab_.snapshot(), before);
}

/// Puts a member into the archive that isn't in the list.
auto withMember(LabMember member) {
    return [member](LabUpdate& update) { update.members.push_back(member); };
}

/// As `withMember`, and signs for it as for a file.
auto withListed(const std::string& path) {
    return [path](LabUpdate& update) {
        update.members.push_back({"Orvu.app/" + path, "x"});
        update.text.files.push_back({path, false, 1, UpdateLab::hash("x")});
        std::ranges::sort(update.text.files, {}, &SignedText::File::path);
    };
}

/// Replaces a text of the manifest.
auto inManifest(const std::string& from, const std::string& to) {
    return [from, to](LabUpdate& update) {
        const auto at = update.manifest.find(from);
        ASSERT_NE(at, std::string::npos);
        update.manifest.replace(at, from.size(), to);
    };
}

/// Changes the signed text without signing it again.
auto inMessage(const std::string& from, const std::string& to) {
    return [from, to](LabUpdate& update) {
        const auto at = update.message.find(from);
        ASSERT_NE(at, std::string::npos);
        update.message.replace(at, from.size(), to);
    };
}

const std::vector<Attack> feeds{
    {"ManifestOfAnotherHost", upToDate, {}, inManifest("updates.example", "other.example")},
    {"ManifestOverHttp", upToDate, {}, inManifest("https:", "http:")},
    {"ManifestWithAPort", upToDate, {}, inManifest(".example/", ".example:444/")},
    {"ManifestWithAPerson", upToDate, {}, inManifest("//updates", "//a@updates")},
    {"ManifestWithAQuery", upToDate, {}, inManifest(".gz", ".gz?id=1")},
    {"ManifestOfALocalFile", upToDate, {}, inManifest("https://updates.example", "file://")},
    {"ManifestOfTheRunningBuild", upToDate, {}, inManifest("\"build\":12", "\"build\":10")},
    {"ManifestOfAnOlderBuild", upToDate, {}, inManifest("\"build\":12", "\"build\":9")},
    {"ManifestOfANegativeBuild", upToDate, {}, inManifest("\"build\":12", "\"build\":-12")},
    {"ManifestCutOff", unreachable, {}, [](auto& u) { u.manifest.pop_back(); }},
    {"ManifestWithMore", unreachable, {}, [](auto& u) { u.manifest += "{}"; }},
    {"ManifestWithoutAHash", unreachable, {}, inManifest("sha256", "sha1")},
    {"ManifestOfAHugeBuild", unreachable, {}, inManifest(":12,", ":99999999999999999999,")},
    {"ManifestThatIsEndless", unreachable, {}, [](auto& u) { u.manifest.insert(0, 70'000, ' '); }},
    {"ManifestThatIsARedirect",
     unreachable,
     {},
     [](auto& u) { u.manifest = "<a href=/>Moved</a>"; }},
    {"HashOfAnotherFile", mismatch, {}, inManifest("sha256\":\"", "sha256\":\"0")},
    {"HashThatIsEmpty",
     mismatch,
     {},
     [](auto& u) { u.manifest.replace(u.manifest.rfind(":\"") + 2, 64, ""); }},
    {"ManifestBuildAboveTheSignedOne", notSigned, {}, inManifest(":12,", ":13,")},
    {"ManifestVersionThatIsNotSigned", notSigned, {}, inManifest("1.12", "9.9")},
};

const std::vector<Attack> signatures{
    {"SignatureOfAnotherKey", notSigned, {}, [](auto& u) { UpdateLab::sign(u, 'x'); }},
    {"SignatureChanged",
     notSigned,
     {},
     [](auto& u) {
         char& digit = u.message[u.message.size() - 2];
         digit = digit == '0' ? '1' : '0';
     }},
    {"SignatureOfZeros",
     notSigned,
     {},
     [](auto& u) { u.message.replace(u.message.size() - 129, 128, std::string(128, '0')); }},
    {"SignatureMissing", notSigned, {}, [](auto& u) { u.message.resize(u.message.size() - 139); }},
    {"SignatureInUpperCase",
     notSigned,
     {},
     [](auto& u) {
         for (auto& c : u.message) c = c == 'a' ? 'A' : c;
     }},
    {"SignatureOfAnotherUpdate",
     notSigned,
     {},
     [](auto& u) {
         auto other = UpdateLab::update(13);
         UpdateLab::seal(other);
         u.message.replace(u.message.size() - 129, 129,
                           other.message.substr(other.message.size() - 129));
     }},
    {"SignedTextEmpty", notSigned, {}, [](auto& u) { u.message.clear(); }},
    {"SignedTextCutOff", notSigned, {}, [](auto& u) { u.message.erase(0, 5); }},
    {"SignedTextWithMoreBehind", notSigned, {}, [](auto& u) { u.message += "\n"; }},
    {"SignedTextWithMoreBefore", notSigned, {}, [](auto& u) { u.message.insert(0, "\n"); }},
    {"SignedTextThatIsEndless", notSigned, {}, [](auto& u) { u.message.insert(0, 5 << 20, 'a'); }},
    {"SignedBuildRaised", notSigned, {}, inMessage("build 12", "build 14")},
    {"SignedFileReplaced", notSigned, {}, inMessage("share/licence", "share/licenca")},
    {"OlderUpdateReplayed", notSigned, [](auto& u) { u = UpdateLab::update(9); },
     inManifest("\"build\":9", "\"build\":12")},
    {"RunningBuildReplayed", notSigned, [](auto& u) { u = UpdateLab::update(10); },
     inManifest("\"build\":10", "\"build\":12")},
    {"OtherProgramsUpdate", notSigned, [](auto& u) { u.text.identity = "app.other.Other"; }},
    {"SignedTextOfAnotherArchive",
     notSigned,
     {},
     [](auto& u) {
         auto other = UpdateLab::update(12);
         other.member("share/licence").content = "other";
         UpdateLab::pack(other);
         u.archive = other.archive;
         UpdateLab::writeManifest(u);
     }},
    {"ArchiveCutOff",
     notSigned,
     {},
     [](auto& u) {
         u.archive.resize(u.archive.size() - 20);
         UpdateLab::writeManifest(u);
     }},
    {"ArchiveWithMoreBehind",
     notSigned,
     {},
     [](auto& u) {
         u.archive += "more";
         UpdateLab::writeManifest(u);
     }},
    {"ArchiveCutOffOnTheWay", mismatch, {}, [](auto& u) { u.archive.resize(100); }},
    {"ArchiveChangedOnTheWay", mismatch, {}, [](auto& u) { u.archive[50] ^= 1; }},
    {"ArchiveThatDoesntCome", mismatch, {}, [](auto& u) { u.archive.clear(); }},
};

/// Of these each is signed by the maker's own key.
const std::vector<Attack> archives{
    {"LinkOut", notUnpacked, withMember({"Orvu.app/lib", "/etc", Kind::symlink})},
    {"LinkInside", notUnpacked, withMember({"Orvu.app/lib", "bin", Kind::symlink})},
    {"LinkUp", notUnpacked, withMember({"Orvu.app/lib", "../../x", Kind::symlink})},
    {"FileThroughALink", notUnpacked,
     [](auto& u) {
         u.members.push_back({"Orvu.app/lib", "/tmp", Kind::symlink});
         u.members.push_back({"Orvu.app/lib/x", "x"});
     }},
    {"HardLink", notUnpacked, withMember({"Orvu.app/passwd", "/etc/passwd", Kind::hardlink})},
    {"HardLinkInside", notUnpacked,
     withMember({"Orvu.app/b", "Orvu.app/bin/orvu", Kind::hardlink})},
    {"Device", notUnpacked, withMember({"Orvu.app/null", "", Kind::device})},
    {"Pipe", notUnpacked, withMember({"Orvu.app/pipe", "", Kind::pipe})},
    {"SetUserId", notUnpacked, [](auto& u) { u.member("bin/orvu").mode = 04755; }},
    {"SetGroupId", notUnpacked, [](auto& u) { u.member("bin/orvu").mode = 02755; }},
    {"StickyFolder", notUnpacked, [](auto& u) { u.member("bin").mode = 01777; }},
    {"PathUp", notUnpacked, withMember({"Orvu.app/../../x", "x"})},
    {"PathWithADot", notUnpacked, withMember({"Orvu.app/./x", "x"})},
    {"PathWithTwoSlashes", notUnpacked, withMember({"Orvu.app//x", "x"})},
    {"PathFromTheRoot", notUnpacked, withMember({"/tmp/orvu-attack", "x"})},
    {"PathBesideTheApplication", notUnpacked, withMember({"Orvu.app.other/x", "x"})},
    {"PathOfTheFolderAbove", notUnpacked, withMember({"x", "x"})},
    {"PathWithABackslash", notUnpacked, withMember({"Orvu.app/a\\b", "x"})},
    {"PathWithANewline", notUnpacked, withMember({"Orvu.app/a\nb", "x"})},
    {"PathBeyondAscii", notUnpacked, withMember({"Orvu.app/\xc3\xa9", "x"})},
    {"PathThatIsTooDeep", notUnpacked,
     [](auto& u) {
         std::string path = "Orvu.app";
         for (int i = 0; i < 40; ++i) path += "/a";
         u.members.push_back({path, "x"});
     }},
    {"NameThatIsTooLong", notUnpacked, withMember({"Orvu.app/" + std::string(256, 'a'), "x"})},
    {"NamesThatDifferByCase", notUnpacked, withMember({"Orvu.app/RELEASE", "x"})},
    {"FoldersThatDifferByCase", notUnpacked, withMember({"Orvu.app/Bin/x", "x"})},
    {"NameTwice", notUnpacked, withMember({"Orvu.app/release", "x"})},
    {"FileInThePlaceOfAFolder", notUnpacked, withMember({"Orvu.app/bin", "x"})},
    {"FileBelowAFile", notUnpacked, withMember({"Orvu.app/release/x", "x"})},
    {"ApplicationThatIsAFile", notUnpacked, withMember({"Orvu.app", "x"})},
    {"SparseFile", notUnpacked, [](auto& u) { u.member("share/icons/a.svg").isSparse = true; }},
    {"Bomb", notUnpacked, withMember({"Orvu.app/zeros", std::string(80 << 20, '\0')})},
    {"ManyEntries", notUnpacked,
     [](auto& u) {
         for (int i = 0; i < 40'001; ++i) u.members.push_back({"Orvu.app/f" + std::to_string(i)});
     }},
    {"WrongTopFolder", noApplication,
     [](auto& u) {
         for (auto& each : u.members) each.path.replace(0, 4, "Evil");
     }},
    {"NothingAtAll", noApplication, [](auto& u) { u.members.clear(); }},
    {"NoProgram", noApplication, [](auto& u) { std::erase(u.text.files, u.listed("bin/orvu")); }},
    {"ProgramThatCantRun", noApplication,
     [](auto& u) { u.listed("bin/orvu").isExecutable = false; }},
    {"FileMore", notSigned, withMember({"Orvu.app/share/more", "x"})},
    {"FolderMore", notSigned, withMember({"Orvu.app/share/more", "", Kind::folder, 0755})},
    {"FileLess", notSigned, [](auto& u) { u.members.pop_back(); }},
    {"FileOfTheSameSizeChanged", notSigned,
     [](auto& u) { u.member("share/licence").content[0] = 'X'; }},
    {"FileLonger", notSigned, [](auto& u) { u.member("share/licence").content += "X"; }},
    {"FileThatBecameAProgram", notSigned, [](auto& u) { u.member("share/licence").mode = 0755; }},
    {"CopyThatSaysAnotherBuild", notSigned,
     [](auto& u) {
         const std::string facts = "version 1.12\nbuild 99\nidentity app.orvu.Orvu\n";
         u.member("release").content = facts;
         u.listed("release") = {"release", false, facts.size(), UpdateLab::hash(facts)};
     }},
    {"ListWithAPathUp", notSigned, withListed("../x")},
    {"ListWithNamesThatDifferByCase", notSigned, withListed("RELEASE")},
    {"ListThatIsNotSorted", notSigned, [](auto& u) { std::ranges::reverse(u.text.files); }},
};

constexpr auto nameOf = [](const testing::TestParamInfo<Attack>& info) {
    return std::string{info.param.name};
};

INSTANTIATE_TEST_SUITE_P(Feeds, UpdateAttackSuite, testing::ValuesIn(feeds), nameOf);
INSTANTIATE_TEST_SUITE_P(Signatures, UpdateAttackSuite, testing::ValuesIn(signatures), nameOf);
INSTANTIATE_TEST_SUITE_P(Archives, UpdateAttackSuite, testing::ValuesIn(archives), nameOf);

}  // namespace
}  // namespace orvu
