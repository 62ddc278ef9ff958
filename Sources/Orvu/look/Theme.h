#pragma once

/// How the program looks and moves: its colours, springs, shapes and buttons.
#include "look/Desk.h"
#include "look/controls/IconButtonStyle.h"
#include "look/controls/PillButtonStyle.h"
#include "look/drawing/NotchShape.h"
#include "look/motion/Motion.h"
