#include <ORMIXGeometry/Message/EntityMessage.h>
#include <ORMIXGeometry/Message/EstimationMessage.h>
#include <ORMIXGeometry/Message/GeometryMessage.h>
#include <ORMIXGeometry/Message/MeasureMessage.h>
#include <ORMIXGeometry/Message/ToolsMessage.h>
#include <ORMIXGeometry/Message/TransformMessage.h>
#include <ORMIXGeometry/ORMIXGeometryLogger.h>

namespace ormix::geom {

LogMessageManager& eEntityMessage::manager() { return getORMIXGeometryLogMessageManager(); }
LogMessageManager& eTransformMessage::manager() { return getORMIXGeometryLogMessageManager(); }
LogMessageManager& eMeasureMessage::manager() { return getORMIXGeometryLogMessageManager(); }
LogMessageManager& eEstimationMessage::manager() { return getORMIXGeometryLogMessageManager(); }
LogMessageManager& eToolsMessage::manager() { return getORMIXGeometryLogMessageManager(); }
LogMessageManager& eORMIXGeometryMessage::manager() { return getORMIXGeometryLogMessageManager(); }

namespace {
// Add the texts of all domains to the catalogue when the library is loaded.
const MessageMapRegistrator<eEntityMessage> g_entityRegistrator;
const MessageMapRegistrator<eTransformMessage> g_transformRegistrator;
const MessageMapRegistrator<eMeasureMessage> g_measureRegistrator;
const MessageMapRegistrator<eEstimationMessage> g_estimationRegistrator;
const MessageMapRegistrator<eToolsMessage> g_toolsRegistrator;
const MessageMapRegistrator<eORMIXGeometryMessage> g_geometryRegistrator;
}  // namespace

}  // namespace ormix::geom
