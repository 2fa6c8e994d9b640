#pragma once
// A user-defined entry of the menus: a program, a URL, or a small dialog whose buttons
// do one of these. Shared and immutable; `shared` says it came from the file that the
// repository commits.
#include <QString>
#include <memory>
#include <optional>
#include <vector>

#include "Models/CustomCommands/CustomCommandAction.h"

struct CustomCommandUI {
  struct Button {
    QString title;
    CustomCommandActionPtr action;
    bool operator==(const Button& other) const { return title == other.title && sameAction(action, other.action); }
  };
  QString title;
  QString description;
  std::vector<Button> buttons;
  bool operator==(const CustomCommandUI&) const = default;
};

struct CustomCommand {
  enum class Target { repository, revision, file, reference };
  enum class ReferenceTarget { localBranch, remoteBranch, tag };

  Target target = Target::repository;
  std::optional<std::vector<ReferenceTarget>> referenceTargets;  // absent: all three
  QString name;
  CustomCommandActionPtr action;
  std::shared_ptr<const CustomCommandUI> ui;
  bool shared = false;

  bool operator==(const CustomCommand& other) const;

  // Whether the command belongs in the menu of a reference of this kind.
  bool appliesTo(ReferenceTarget kind) const;

  static QString jsonValue(Target target);
  static std::optional<Target> targetFromJson(const QString& value);
  // What the preferences call the target: "Repository", "Commit", "File", "Branch".
  static QString label(Target target);
  static QString jsonValue(ReferenceTarget target);
  static std::optional<ReferenceTarget> referenceTargetFromJson(const QString& value);
};

using CustomCommandPtr = std::shared_ptr<const CustomCommand>;
using CustomCommandList = std::vector<CustomCommandPtr>;
