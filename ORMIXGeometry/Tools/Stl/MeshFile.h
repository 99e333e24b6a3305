#pragma once

/// \file
/// `readMesh` and `writeMesh` were declared here when STL was the only format.
#include <ORMIXGeometry/Tools/MeshFiles/MeshFile.h>
