#include "profiles/ProfileIcons.h"

#include "foundation/text/Text.h"

#include <algorithm>
#include <set>
#include <string>

namespace orvu {
namespace {

/// Each word once, however often a person pastes it.
using Words = std::set<std::string_view>;

bool isBlank(std::string_view codePoint) {
    return trimmed(codePoint, TrimSet::whitespaces).empty();
}

Words words(std::string_view text) {
    Words all;
    std::size_t begin = 0;
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t start = at;
        static_cast<void>(nextCodePoint(text, at));
        if (!isBlank(text.substr(start, at - start))) continue;
        all.insert(text.substr(begin, start - begin));
        begin = at;
    }
    all.insert(text.substr(begin));
    all.erase("");
    return all;
}

bool matches(const ProfileIcons::Row& row, const Words& wanted) {
    return std::ranges::all_of(wanted, [&](std::string_view word) {
        return row.words.contains(word) || row.symbol.contains(word);
    });
}

}  // namespace

constinit const std::array<ProfileIcons::Row, 102> ProfileIcons::all{{
    {"person.fill", "person me personal"},
    {"briefcase.fill", "work job office"},
    {"graduationcap.fill", "school university study"},
    {"house.fill", "home house family"},
    {"heart.fill", "heart love health"},
    {"star.fill", "star favourite"},
    {"bolt.fill", "lightning energy power"},
    {"paperplane.fill", "paper plane message"},
    {"airplane", "aeroplane flight travel"},
    {"paintpalette.fill", "art colour paint"},
    {"paintbrush.pointed.fill", "brush painting design"},
    {"pencil.and.scribble", "drawing writing sketch"},
    {"chevron.left.forwardslash.chevron.right", "code dev programming"},
    {"terminal.fill", "terminal console shell"},
    {"hammer.fill", "hammer tool building"},
    {"wrench.and.screwdriver.fill", "spanner tool repair"},
    {"flask.fill", "chemistry science laboratory"},
    {"atom", "atom physics science"},
    {"brain.head.profile.fill", "brain mind thought"},
    {"gamecontroller.fill", "game console play"},
    {"sportscourt.fill", "sport pitch match"},
    {"figure.run", "runner jogging exercise"},
    {"dumbbell.fill", "gym fitness weights"},
    {"figure.mind.and.body", "yoga meditation wellbeing"},
    {"leaf.fill", "leaf plant nature"},
    {"tree.fill", "tree forest nature"},
    {"pawprint.fill", "pet dog cat"},
    {"drop.fill", "water drop rain"},
    {"sun.max.fill", "sun summer weather"},
    {"moon.stars.fill", "moon night sleep"},
    {"cloud.fill", "cloud sky weather"},
    {"snowflake", "snow winter cold"},
    {"flame.fill", "fire flame heat"},
    {"fork.knife", "food restaurant dinner"},
    {"cup.and.saucer.fill", "tea coffee breakfast"},
    {"wineglass.fill", "wine drink bar"},
    {"birthday.cake.fill", "birthday cake baking"},
    {"bag.fill", "shopping bag fashion"},
    {"cart.fill", "trolley shopping groceries"},
    {"tag.fill", "tag label price"},
    {"creditcard.fill", "payment bank card"},
    {"banknote.fill", "money cash finance"},
    {"building.columns.fill", "bank museum government"},
    {"chart.line.uptrend.xyaxis", "chart graph shares"},
    {"suitcase.fill", "luggage travel trip"},
    {"beach.umbrella.fill", "beach holiday summer"},
    {"mountain.2.fill", "mountain hill hiking"},
    {"bicycle", "bike cycling exercise"},
    {"car.fill", "car road driving"},
    {"tram.fill", "tram train commute"},
    {"map.fill", "map route navigation"},
    {"globe.europe.africa.fill", "world earth planet"},
    {"camera.fill", "camera photo picture"},
    {"film.fill", "film cinema video"},
    {"music.note", "music song tune"},
    {"headphones", "audio music podcast"},
    {"mic.fill", "microphone voice recording"},
    {"book.fill", "book novel reading"},
    {"books.vertical.fill", "books library shelf"},
    {"newspaper.fill", "news press journalism"},
    {"lightbulb.fill", "idea light lamp"},
    {"sparkles", "magic sparkle ai"},
    {"wand.and.stars", "magic wand wizard"},
    {"crown.fill", "crown king queen"},
    {"trophy.fill", "trophy prize winner"},
    {"medal.fill", "medal award honour"},
    {"diamond.fill", "diamond gem jewellery"},
    {"person.2.fill", "people friends team"},
    {"figure.2.and.child.holdinghands", "family parents children"},
    {"stethoscope", "doctor health medicine"},
    {"cross.case.fill", "hospital first aid"},
    {"lock.fill", "private lock secure"},
    {"shield.fill", "shield security protection"},
    {"key.fill", "key password access"},
    {"eye.slash.fill", "secret privacy incognito"},
    {"hand.raised.fill", "hand palm stop"},
    {"megaphone.fill", "announcement marketing advert"},
    {"storefront.fill", "shop market trade"},
    {"building.2.fill", "city company office"},
    {"iphone", "mobile phone call"},
    {"laptopcomputer", "laptop computer mac"},
    {"puzzlepiece.fill", "puzzle jigsaw hobby"},
    {"theatermasks.fill", "theatre drama mask"},
    {"party.popper.fill", "party celebration confetti"},
    {"gift.fill", "gift present birthday"},
    {"flag.fill", "flag country nation"},
    {"anchor", "anchor sea harbour"},
    {"sailboat.fill", "boat sailing sea"},
    {"fish.fill", "fish sea angling"},
    {"bird.fill", "bird wing animal"},
    {"ant.fill", "ant insect bug"},
    {"tortoise.fill", "tortoise turtle animal"},
    {"hare.fill", "hare rabbit animal"},
    {"globe", "internet web world"},
    {"envelope.fill", "email post letter"},
    {"calendar", "diary date schedule"},
    {"checklist", "list tasks chores"},
    {"folder.fill", "folder files documents"},
    {"tray.full.fill", "inbox tray archive"},
    {"square.grid.2x2.fill", "grid squares apps"},
    {"circle.hexagongrid.fill", "circles pattern hive"},
    {"infinity", "infinity loop"},
}};

std::vector<std::string_view> ProfileIcons::icons(std::string_view search) {
    const std::string text = lowercased(search);
    const Words wanted = words(text);
    std::vector<std::string_view> found;
    for (const Row& row : all) {
        if (matches(row, wanted)) found.push_back(row.symbol);
    }
    return found;
}

}  // namespace orvu
