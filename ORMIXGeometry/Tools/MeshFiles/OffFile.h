#pragma once

#include <ORMIXGeometry/Entity/3d/Mesh/TriMesh3d.h>
#include <ORMIXGeometry/Tools/MeshFiles/IndexedFaces.h>
#include <ORMIXGeometry/Tools/MeshFiles/MeshText.h>
#include <ORMIXGeometry/Tools/Stl/StlInput.h>

#include <string_view>

// Not installed.
namespace ormix::geom::detail {

/// Whether a word begins an OFF file: "OFF", or that with the letters before it that say what vertices have besides
/// their coordinates, "ST", "C", "N", "4" and "n", in this order.
bool isOffKeyword(std::string_view word);

/// Reads an OFF file as text: the keyword, which may be missing, the numbers of vertices, faces and edges (which may be
/// missing, and on the line of the keyword), a line for each vertex, whose first three numbers count, and a line for
/// each face: the number of its corners, their indices from 0, and a colour, which is passed over. Vertices and faces
/// may also take several lines. Reading stops with "4" or "n" before "OFF", whose vertices do not have three
/// coordinates, and with "BINARY" behind it.
template <class Real>
IndexedFaces<Real> readOff(StlInput& input);

/// Writes the counts, the vertices and the faces.
template <class T>
void writeOff(std::ostream& stream, const TriMesh3d<T>& mesh, const NumberFormat& format);

}  // namespace ormix::geom::detail
