#pragma once

#include <ORMIXGeometry/Entity/3d/Mesh/TriMesh3d.h>
#include <ORMIXGeometry/Tools/MeshFiles/IndexedFaces.h>
#include <ORMIXGeometry/Tools/MeshFiles/MeshFormat.h>
#include <ORMIXGeometry/Tools/MeshFiles/MeshText.h>
#include <ORMIXGeometry/Tools/Stl/StlInput.h>

// Not installed.
namespace ormix::geom::detail {

/// Reads a PLY file of any of the three formats: the properties `x`, `y` and `z` of the element `vertex`, and the list
/// `vertex_indices` or `vertex_index` of the element `face`, in any order, of any types and between any others, which
/// are passed over as all other elements are.
/// \param format set to the format of the header
template <class Real>
IndexedFaces<Real> readPly(StlInput& input, eMeshFileFormat& format);

/// Writes vertices as numbers of the type of the mesh, `float` for moved integers, and faces as lists of `uint`.
/// \param format one of the three of PLY
template <class T>
void writePly(std::ostream& stream, const TriMesh3d<T>& mesh, eMeshFileFormat format, const NumberFormat& numbers);

}  // namespace ormix::geom::detail
