#include "platform/NavigationCauses.h"

#include <gtest/gtest.h>

#include <string>

namespace orvu {
namespace {

Url url(std::string_view text) { return *Url::parse(text); }

TEST(NavigationCausesTest, TheNewestNavigationToAnAddressTells) {
    NavigationCauses causes;
    causes.add(url("https://a.example/x"), DownloadCause::person);
    causes.add(url("https://a.example/y"), DownloadCause::gesture);
    EXPECT_EQ(causes.cause(url("https://a.example/x")), DownloadCause::person);

    causes.add(url("https://a.example/x"), DownloadCause::page);

    EXPECT_EQ(causes.cause(url("https://a.example/x")), DownloadCause::page);
    EXPECT_EQ(causes.cause(url("https://a.example/y")), DownloadCause::gesture);
}

TEST(NavigationCausesTest, WhatIsNotKnownIsThePages) {
    const NavigationCauses causes;

    EXPECT_EQ(causes.cause(url("https://a.example/x")), DownloadCause::page);
}

TEST(NavigationCausesTest, AFragmentMakesNoDifference) {
    NavigationCauses causes;
    causes.add(url("https://a.example/x#part"), DownloadCause::person);

    EXPECT_EQ(causes.cause(url("https://a.example/x")), DownloadCause::person);
}

TEST(NavigationCausesTest, OnlySoManyAreKept) {
    NavigationCauses causes;
    causes.add(url("https://a.example/x"), DownloadCause::person);

    for (std::size_t i = 0; i < NavigationCauses::limit; ++i) {
        causes.add(url("https://a.example/" + std::to_string(i)), DownloadCause::gesture);
    }

    EXPECT_EQ(causes.cause(url("https://a.example/x")), DownloadCause::page);
    EXPECT_EQ(causes.cause(url("https://a.example/0")), DownloadCause::gesture);
}

}  // namespace
}  // namespace orvu
