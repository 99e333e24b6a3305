#pragma once

/// \file
/// Everything of ORMIXUtil.

#include <ORMIXUtil/Enumeration.h>
#include <ORMIXUtil/Exception/BaseException.h>
#include <ORMIXUtil/Exception/UnHandleException.h>
#include <ORMIXUtil/HashSecret.h>
#include <ORMIXUtil/Logger/Logger.h>
#include <ORMIXUtil/Memory/LargePages.h>
#include <ORMIXUtil/Message/LogMessageFormater.h>
#include <ORMIXUtil/Message/LogMessageManager.h>
#include <ORMIXUtil/Message/MessageDomain.h>
#include <ORMIXUtil/NumericLimits.h>
#include <ORMIXUtil/Object/BaseDynamicObject.h>
#include <ORMIXUtil/Object/DynamicObjectFactory.h>
#include <ORMIXUtil/Object/DynamicRegistrator.h>
#include <ORMIXUtil/ProcessingResult.h>
#include <ORMIXUtil/ScalarTypes.h>
#include <ORMIXUtil/Version.h>
