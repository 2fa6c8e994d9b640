#pragma once
// What a refresh is asked to read: a set of bits over an integer. Commands that change
// the repository invalidate the bits of what they changed.
#include <QString>

class Subdomain {
 public:
  int rawValue = 0;

  constexpr Subdomain() = default;
  constexpr explicit Subdomain(int raw) : rawValue(raw) {}

  static constexpr Subdomain none() { return Subdomain(0); }
  static constexpr Subdomain head() { return Subdomain(1); }
  static constexpr Subdomain remotes() { return Subdomain(2); }
  static constexpr Subdomain revisions() { return Subdomain(4); }
  static constexpr Subdomain stashes() { return Subdomain(8); }
  static constexpr Subdomain submodules() { return Subdomain(16); }
  static constexpr Subdomain gitFlowSettings() { return Subdomain(32); }
  static constexpr Subdomain bugTrackerSettings() { return Subdomain(64); }
  static constexpr Subdomain customCommands() { return Subdomain(128); }
  static constexpr Subdomain referenceSettings() { return Subdomain(256); }
  static constexpr Subdomain localBranches() { return Subdomain(512); }
  static constexpr Subdomain remoteBranches() { return Subdomain(1024); }
  static constexpr Subdomain tags() { return Subdomain(2048); }
  static constexpr Subdomain repositoryState() { return Subdomain(4096); }
  static constexpr Subdomain changedFiles() { return Subdomain(8192); }
  static constexpr Subdomain gitLfsInitialized() { return Subdomain(16384); }

  static constexpr Subdomain branches() { return Subdomain(512 | 1024); }
  static constexpr Subdomain references() { return Subdomain(512 | 1024 | 2048); }
  // Everything a refresh of RepositoryData reads: all bits below 4096, and 16384.
  static constexpr Subdomain repositoryData() { return Subdomain(4095 | 16384); }
  // The state and the changed files.
  static constexpr Subdomain repositoryStatus() { return Subdomain(4096 | 8192); }
  static constexpr Subdomain all() { return Subdomain(-1); }

  constexpr bool isEmpty() const { return rawValue == 0; }
  // Every bit of `other` is set here.
  constexpr bool contains(Subdomain other) const { return (rawValue & other.rawValue) == other.rawValue; }
  // Any bit of `other` is set here.
  constexpr bool intersects(Subdomain other) const { return (rawValue & other.rawValue) != 0; }

  constexpr Subdomain operator|(Subdomain other) const { return Subdomain(rawValue | other.rawValue); }
  constexpr Subdomain operator&(Subdomain other) const { return Subdomain(rawValue & other.rawValue); }
  constexpr Subdomain operator~() const { return Subdomain(~rawValue); }
  constexpr Subdomain& operator|=(Subdomain other) { rawValue |= other.rawValue; return *this; }
  constexpr Subdomain& operator&=(Subdomain other) { rawValue &= other.rawValue; return *this; }
  // The bits of this set that `other` doesn't hold.
  constexpr Subdomain subtracting(Subdomain other) const { return Subdomain(rawValue & ~other.rawValue); }

  constexpr bool operator==(const Subdomain&) const = default;

  // ".head", ".branches", ".all"; a set without a name of its own prints its parts,
  // "[.head, .references]".
  QString description() const;
};
