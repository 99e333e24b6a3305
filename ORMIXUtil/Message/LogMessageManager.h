#pragma once

#include <ORMIXUtil/Export.h>

#include <string>

namespace ormix {

/// A library's catalogue of message texts, by domain and id. Safe from several threads at once.
class ORMIX_UTIL_API LogMessageManager {
 public:
  /// The catalogue with this name (one a library, created at the first call and kept until the process ends).
  static LogMessageManager& getInstance(const std::string& name);

  /// Adds a text; a text that is there already under this domain and id is replaced.
  void addMessage(const std::string& domain, int id, const std::string& text);
  /// The text with its placeholders; for an unknown domain or id a text that names both, so that an error path never
  /// ends in a second error.
  std::string getMessage(const std::string& domain, int id) const;
  /// Whether there is a text under this domain and id.
  bool hasMessage(const std::string& domain, int id) const;
  /// The name under which getInstance() gives this catalogue.
  const std::string& getName() const;

  LogMessageManager(const LogMessageManager&) = delete;
  LogMessageManager& operator=(const LogMessageManager&) = delete;

 private:
  struct Catalogue;
  friend struct LogMessageManagers;
  explicit LogMessageManager(const std::string& name);
  ~LogMessageManager();
  Catalogue* _catalogue;
};

}  // namespace ormix
