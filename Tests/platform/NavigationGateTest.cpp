#include "platform/NavigationGate.h"

#include <gtest/gtest.h>

namespace orvu {
namespace {

bool canLoad(std::string_view url) { return NavigationGate::canLoad(*Url::parse(url)); }

bool mayOpen(std::string_view target, const char* page = "https://a.example/page") {
    return NavigationGate::mayOpenElsewhere(*Url::parse(target),
                                            page ? Url::parse(page) : std::nullopt);
}

TEST(NavigationGateTest, WhatTheEngineCannotLoadIsRefused) {
    for (const auto url :
         {"mailto:x@a.example", "tel:1", "magnet:?x", "made-up://x", "webkit://gpu",
          "ftp://a.example/", "resource:///x", "view-source:https://a.example/"}) {
        EXPECT_FALSE(canLoad(url)) << url;
    }
}

TEST(NavigationGateTest, WhatItCanLoadIsLeftToIt) {
    for (const auto url :
         {"http://a.example/", "HTTPS://a.example/", "about:blank", "about:srcdoc", "file:///x",
          "data:text/html,x", "blob:https://a.example/1", "javascript:1"}) {
        EXPECT_TRUE(canLoad(url)) << url;
    }
}

TEST(NavigationGateTest, APageMayOpenTheWebAndTheBlankPage) {
    for (const auto url : {"https://b.example/", "http://b.example:81/x", "HTTP://B.example/",
                           "about:blank", "ABOUT:blank"}) {
        EXPECT_TRUE(mayOpen(url)) << url;
        EXPECT_TRUE(mayOpen(url, nullptr)) << url;
    }
}

TEST(NavigationGateTest, APageNeverOpensWhatRunsInAnothersPlaceOrBelongsToTheEngine) {
    for (const auto url :
         {"data:text/html,x", "DATA:text/html,x", "javascript:1", "webkit://gpu", "about:srcdoc",
          "about:config", "mailto:x@a.example", "made-up://x", "view-source:https://a.example/"}) {
        EXPECT_FALSE(mayOpen(url)) << url;
        EXPECT_FALSE(mayOpen(url, "file:///home/page.html")) << url;
    }
}

TEST(NavigationGateTest, OnlyAFileOpensAFile) {
    EXPECT_FALSE(mayOpen("file:///etc/hostname"));
    EXPECT_FALSE(mayOpen("FILE:///etc/hostname"));
    EXPECT_FALSE(mayOpen("file:///etc/hostname", nullptr));
    EXPECT_TRUE(mayOpen("file:///home/b.html", "file:///home/a.html"));
}

TEST(NavigationGateTest, ABlobOpensFromItsOwnOriginAlone) {
    EXPECT_TRUE(mayOpen("blob:https://a.example/1-2-3"));
    EXPECT_TRUE(mayOpen("blob:https://a.example:443/1-2-3"));
    EXPECT_TRUE(mayOpen("blob:http://a.example:8080/1", "http://A.example:8080/x"));
    for (const auto url :
         {"blob:https://b.example/1", "blob:http://a.example/1", "blob:https://a.example:444/1",
          "blob:null/1", "blob:", "blob:https://b.example@/1", "blob:https://a.example@b.example/1",
          "blob:data:text/html,x", "blob:https://xa.example/1"}) {
        EXPECT_FALSE(mayOpen(url)) << url;
    }
    EXPECT_FALSE(mayOpen("blob:https://a.example/1", nullptr));
    EXPECT_FALSE(mayOpen("blob:null/1", "file:///home/a.html"));
}

}  // namespace
}  // namespace orvu
