#include <ORMIXSerialization/Message/SerializationMessage.h>
#include <ORMIXSerialization/ORMIXSerializationLogger.h>

namespace ormix {

LogMessageManager& eORMIXSerializationMessage::manager() { return getORMIXSerializationLogMessageManager(); }

namespace {
// The catalogue is complete as soon as the library is loaded.
const MessageMapRegistrator<eORMIXSerializationMessage> g_messageRegistrator;
}  // namespace

}  // namespace ormix
