#include <ORMIXUtil/Message/LogMessageManager.h>

#include <map>
#include <mutex>
#include <utility>

namespace ormix {

struct LogMessageManager::Catalogue {
  std::string name;
  mutable std::mutex mutex;
  std::map<std::pair<std::string, int>, std::string> texts;
};

/// The catalogues of all libraries; owns them, so that a reference stays good until the process ends.
struct LogMessageManagers {
  std::mutex mutex;
  std::map<std::string, LogMessageManager*> byName;

  ~LogMessageManagers() {
    for (auto& entry : byName) delete entry.second;
  }
  LogMessageManager& get(const std::string& name) {
    const std::lock_guard<std::mutex> lock(mutex);
    LogMessageManager*& manager = byName[name];
    if (!manager) manager = new LogMessageManager(name);
    return *manager;
  }
};

LogMessageManager::LogMessageManager(const std::string& name) : _catalogue(new Catalogue) { _catalogue->name = name; }
LogMessageManager::~LogMessageManager() { delete _catalogue; }

LogMessageManager& LogMessageManager::getInstance(const std::string& name) {
  static LogMessageManagers managers;
  return managers.get(name);
}

void LogMessageManager::addMessage(const std::string& domain, int id, const std::string& text) {
  const std::lock_guard<std::mutex> lock(_catalogue->mutex);
  _catalogue->texts[{domain, id}] = text;
}

std::string LogMessageManager::getMessage(const std::string& domain, int id) const {
  const std::lock_guard<std::mutex> lock(_catalogue->mutex);
  const auto found = _catalogue->texts.find({domain, id});
  if (found != _catalogue->texts.end()) return found->second;
  return "Unknown message " + std::to_string(id) + " of domain " + domain;
}

bool LogMessageManager::hasMessage(const std::string& domain, int id) const {
  const std::lock_guard<std::mutex> lock(_catalogue->mutex);
  return _catalogue->texts.count({domain, id}) != 0;
}

const std::string& LogMessageManager::getName() const { return _catalogue->name; }

}  // namespace ormix
