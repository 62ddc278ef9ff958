#pragma once

/// What goes out to search services: bangs, and predictions of what is typed.
#include "search/Bang.h"
#include "search/SearchSuggester.h"
