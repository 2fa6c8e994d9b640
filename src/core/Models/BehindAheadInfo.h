#pragma once

// How far a local branch is from its upstream.
struct BehindAheadInfo {
  int behind = 0;
  int ahead = 0;

  bool operator==(const BehindAheadInfo&) const = default;
};
