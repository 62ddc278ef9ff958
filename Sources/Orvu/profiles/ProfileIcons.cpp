#include "profiles/ProfileIcons.h"

#include "foundation/text/Text.h"
#include "foundation/text/Translation.h"

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
        return std::string_view{row.words}.contains(word) || row.symbol.contains(word);
    });
}

}  // namespace

constinit const std::array<ProfileIcons::Row, 102> ProfileIcons::all{{
    {"person.fill", phrase("person me personal")},
    {"briefcase.fill", phrase("work job office")},
    {"graduationcap.fill", phrase("school university study")},
    {"house.fill", phrase("home house family")},
    {"heart.fill", phrase("heart love health")},
    {"star.fill", phrase("star favourite")},
    {"bolt.fill", phrase("lightning energy power")},
    {"paperplane.fill", phrase("paper plane message")},
    {"airplane", phrase("aeroplane flight travel")},
    {"paintpalette.fill", phrase("art colour paint")},
    {"paintbrush.pointed.fill", phrase("brush painting design")},
    {"pencil.and.scribble", phrase("drawing writing sketch")},
    {"chevron.left.forwardslash.chevron.right", phrase("code dev programming")},
    {"terminal.fill", phrase("terminal console shell")},
    {"hammer.fill", phrase("hammer tool building")},
    {"wrench.and.screwdriver.fill", phrase("spanner tool repair")},
    {"flask.fill", phrase("chemistry science laboratory")},
    {"atom", phrase("atom physics science")},
    {"brain.head.profile.fill", phrase("brain mind thought")},
    {"gamecontroller.fill", phrase("game console play")},
    {"sportscourt.fill", phrase("sport pitch match")},
    {"figure.run", phrase("runner jogging exercise")},
    {"dumbbell.fill", phrase("gym fitness weights")},
    {"figure.mind.and.body", phrase("yoga meditation wellbeing")},
    {"leaf.fill", phrase("leaf plant nature")},
    {"tree.fill", phrase("tree forest nature")},
    {"pawprint.fill", phrase("pet dog cat")},
    {"drop.fill", phrase("water drop rain")},
    {"sun.max.fill", phrase("sun summer weather")},
    {"moon.stars.fill", phrase("moon night sleep")},
    {"cloud.fill", phrase("cloud sky weather")},
    {"snowflake", phrase("snow winter cold")},
    {"flame.fill", phrase("fire flame heat")},
    {"fork.knife", phrase("food restaurant dinner")},
    {"cup.and.saucer.fill", phrase("tea coffee breakfast")},
    {"wineglass.fill", phrase("wine drink bar")},
    {"birthday.cake.fill", phrase("birthday cake baking")},
    {"bag.fill", phrase("shopping bag fashion")},
    {"cart.fill", phrase("trolley shopping groceries")},
    {"tag.fill", phrase("tag label price")},
    {"creditcard.fill", phrase("payment bank card")},
    {"banknote.fill", phrase("money cash finance")},
    {"building.columns.fill", phrase("bank museum government")},
    {"chart.line.uptrend.xyaxis", phrase("chart graph shares")},
    {"suitcase.fill", phrase("luggage travel trip")},
    {"beach.umbrella.fill", phrase("beach holiday summer")},
    {"mountain.2.fill", phrase("mountain hill hiking")},
    {"bicycle", phrase("bike cycling exercise")},
    {"car.fill", phrase("car road driving")},
    {"tram.fill", phrase("tram train commute")},
    {"map.fill", phrase("map route navigation")},
    {"globe.europe.africa.fill", phrase("world earth planet")},
    {"camera.fill", phrase("camera photo picture")},
    {"film.fill", phrase("film cinema video")},
    {"music.note", phrase("music song tune")},
    {"headphones", phrase("audio music podcast")},
    {"mic.fill", phrase("microphone voice recording")},
    {"book.fill", phrase("book novel reading")},
    {"books.vertical.fill", phrase("books library shelf")},
    {"newspaper.fill", phrase("news press journalism")},
    {"lightbulb.fill", phrase("idea light lamp")},
    {"sparkles", phrase("magic sparkle ai")},
    {"wand.and.stars", phrase("magic wand wizard")},
    {"crown.fill", phrase("crown king queen")},
    {"trophy.fill", phrase("trophy prize winner")},
    {"medal.fill", phrase("medal award honour")},
    {"diamond.fill", phrase("diamond gem jewellery")},
    {"person.2.fill", phrase("people friends team")},
    {"figure.2.and.child.holdinghands", phrase("family parents children")},
    {"stethoscope", phrase("doctor health medicine")},
    {"cross.case.fill", phrase("hospital first aid")},
    {"lock.fill", phrase("private lock secure")},
    {"shield.fill", phrase("shield security protection")},
    {"key.fill", phrase("key password access")},
    {"eye.slash.fill", phrase("secret privacy incognito")},
    {"hand.raised.fill", phrase("hand palm stop")},
    {"megaphone.fill", phrase("announcement marketing advert")},
    {"storefront.fill", phrase("shop market trade")},
    {"building.2.fill", phrase("city company office")},
    {"iphone", phrase("mobile phone call")},
    {"laptopcomputer", phrase("laptop computer mac")},
    {"puzzlepiece.fill", phrase("puzzle jigsaw hobby")},
    {"theatermasks.fill", phrase("theatre drama mask")},
    {"party.popper.fill", phrase("party celebration confetti")},
    {"gift.fill", phrase("gift present birthday")},
    {"flag.fill", phrase("flag country nation")},
    {"anchor", phrase("anchor sea harbour")},
    {"sailboat.fill", phrase("boat sailing sea")},
    {"fish.fill", phrase("fish sea angling")},
    {"bird.fill", phrase("bird wing animal")},
    {"ant.fill", phrase("ant insect bug")},
    {"tortoise.fill", phrase("tortoise turtle animal")},
    {"hare.fill", phrase("hare rabbit animal")},
    {"globe", phrase("internet web world")},
    {"envelope.fill", phrase("email post letter")},
    {"calendar", phrase("diary date schedule")},
    {"checklist", phrase("list tasks chores")},
    {"folder.fill", phrase("folder files documents")},
    {"tray.full.fill", phrase("inbox tray archive")},
    {"square.grid.2x2.fill", phrase("grid squares apps")},
    {"circle.hexagongrid.fill", phrase("circles pattern hive")},
    {"infinity", phrase("infinity loop")},
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
