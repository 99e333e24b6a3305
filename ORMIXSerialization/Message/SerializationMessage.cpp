#include <ORMIXSerialization/Message/SerializationMessage.h>
#include <ORMIXSerialization/ORMIXSerializationLogger.h>

namespace ormix {

LogMessageManager& eORMIXSerializationMessage::manager() { return getORMIXSerializationLogMessageManager(); }

namespace {
// Registers the messages when the library is loaded.
const MessageMapRegistrator<eORMIXSerializationMessage> g_messageRegistrator;
}  // namespace

}  // namespace ormix
