#pragma once

/// \file
/// Includes all installed headers of ORMIXSerialization and of ORMIXUtil.

#include <ORMIXSerialization/Archive/ArchiveFormat.h>
#include <ORMIXSerialization/Archive/ArchiveItem.h>
#include <ORMIXSerialization/Archive/ArchiveSectionManager.h>
#include <ORMIXSerialization/Archive/BaseIArchive.h>
#include <ORMIXSerialization/Archive/BaseOArchive.h>
#include <ORMIXSerialization/Archive/CborIArchive.h>
#include <ORMIXSerialization/Archive/CborOArchive.h>
#include <ORMIXSerialization/Archive/ClassVersionRegistry.h>
#include <ORMIXSerialization/Archive/JsonIArchive.h>
#include <ORMIXSerialization/Archive/JsonOArchive.h>
#include <ORMIXSerialization/Archive/NumericArray.h>
#include <ORMIXSerialization/Archive/PackedCoordinates.h>
#include <ORMIXSerialization/Message/SerializationMessage.h>
#include <ORMIXSerialization/ORMIXSerializationException.h>
#include <ORMIXSerialization/ORMIXSerializationLogger.h>
#include <ORMIXSerialization/Object/BaseObjectWithSkeleton.h>
#include <ORMIXSerialization/Object/BaseSerializationObject.h>
#include <ORMIXSerialization/Object/ClassVersion.h>
#include <ORMIXSerialization/Object/ObjectArchive.h>
#include <ORMIXSerialization/Object/RegisteredObject.h>
#include <ORMIXSerialization/Object/VersionedLevel.h>
#include <ORMIXUtil/ORMIXUtil.h>
