#pragma once

// What a line selection is turned into. The values are those the stage bar sends.
enum class SelectionMode { stage = 0, unstage = 1, discard = 2 };
