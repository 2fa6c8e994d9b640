#pragma once
// What a custom command or one of its dialog buttons does: run a program, open a URL,
// or close the dialog. Immutable once made.
#include <QString>
#include <memory>

class CustomCommandAction {
 public:
  enum class Type { process, url, cancel };
  virtual ~CustomCommandAction() = default;
  virtual Type type() const = 0;
  virtual bool equals(const CustomCommandAction& other) const = 0;
};

using CustomCommandActionPtr = std::shared_ptr<const CustomCommandAction>;

class ProcessCustomCommandAction final : public CustomCommandAction {
 public:
  ProcessCustomCommandAction(QString path, QString parameters, bool showOutput, bool waitForExit)
      : path(std::move(path)), parameters(std::move(parameters)), showOutput(showOutput), waitForExit(waitForExit) {}
  Type type() const override { return Type::process; }
  bool equals(const CustomCommandAction& other) const override;

  const QString path;
  const QString parameters;  // "args" in the file
  const bool showOutput;
  const bool waitForExit;
};

class UrlCustomCommandAction final : public CustomCommandAction {
 public:
  explicit UrlCustomCommandAction(QString url) : url(std::move(url)) {}
  Type type() const override { return Type::url; }
  bool equals(const CustomCommandAction& other) const override;

  const QString url;
};

class CancelCustomCommandAction final : public CustomCommandAction {
 public:
  Type type() const override { return Type::cancel; }
  bool equals(const CustomCommandAction& other) const override { return other.type() == Type::cancel; }
};

bool sameAction(const CustomCommandActionPtr& a, const CustomCommandActionPtr& b);
