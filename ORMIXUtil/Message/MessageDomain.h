#pragma once

#include <ORMIXUtil/Logger/Logger.h>
#include <ORMIXUtil/Message/LogMessageFormater.h>
#include <ORMIXUtil/Message/LogMessageManager.h>

#include <string>
#include <typeinfo>

namespace ormix {

/// One line of a message catalogue.
struct MessageText {
  int id;            ///< within its domain
  const char* text;  ///< with placeholders as LogMessageFormater fills them
};

/// A message domain `D` is a struct that holds an enumeration of ids, a tag type `domain`, the array `texts` of
/// `MessageText` and `manager()`, the catalogue of its library. The domain's name in the catalogue is the tag's
/// run-time type name, which is why the libraries' namespaces carry no inline version.
template <class D>
std::string domainName() {
  return typeid(typename D::domain).name();
}

/// Puts a domain's texts into its catalogue, once however often it is asked.
template <class D>
struct MsgMapRegistrator {
  /// Adds the texts at the first call. Safe from several threads at once.
  static void registerMessageMap() {
    static const bool registered = [] {
      for (const MessageText& message : D::texts) D::manager().addMessage(domainName<D>(), message.id, message.text);
      return true;
    }();
    static_cast<void>(registered);
  }
};

/// Registers a domain when a static object of it is constructed, that is when its library is loaded.
template <class D>
struct MessageMapRegistrator {
  /// As MsgMapRegistrator::registerMessageMap().
  MessageMapRegistrator() { MsgMapRegistrator<D>::registerMessageMap(); }
};

/// The text of message `id` of domain `D` with its placeholders filled in order.
template <class D, class... Arguments>
std::string formatMessage(int id, const Arguments&... arguments) {
  LogMessageFormater formater(D::manager());
  formater.setMsgId(domainName<D>(), id);
  static_cast<void>((formater % ... % arguments));
  return formater.string();
}

}  // namespace ormix
