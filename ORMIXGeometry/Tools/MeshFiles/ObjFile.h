#pragma once

#include <ORMIXGeometry/Entity/3d/Mesh/TriMesh3d.h>
#include <ORMIXGeometry/Tools/MeshFiles/IndexedFaces.h>
#include <ORMIXGeometry/Tools/MeshFiles/MeshText.h>
#include <ORMIXGeometry/Tools/Stl/StlInput.h>

// Not installed.
namespace ormix::geom::detail {

/// Reads an OBJ file. Of its statements, those of vertices (`v`, the first three numbers), faces (`f`, of each corner
/// the index of the vertex, from 1, or counted back from the last vertex where it is negative) and objects (`o`,
/// counted) are read and all others passed over. A backslash continues a line. Faces may refer to vertices behind them.
/// Reading stops at a vertex without three numbers.
template <class Real>
IndexedFaces<Real> readObj(StlInput& input);

/// Writes the object with its vertices and faces.
template <class T>
void writeObj(std::ostream& stream, const TriMesh3d<T>& mesh, const std::string& name, const NumberFormat& format);

}  // namespace ormix::geom::detail
