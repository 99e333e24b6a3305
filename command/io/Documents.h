#pragma once

#include <ORMIXGeometry/Entity/3d/Mesh/FaceVertexTriMesh3d.h>
#include <ORMIXGeometry/Tools/MeshFiles/MeshFile.h>
#include <ORMIXSerialization/Object/ObjectArchive.h>
#include <command/frame/Arguments.h>
#include <command/io/InputFile.h>
#include <command/io/PointText.h>

#include <functional>
#include <map>
#include <string>

namespace ormix::command {

/// What kinds of inputs there are.
enum class eInputFormat {
  Archive,  ///< CBOR, or JSON, of which several may follow each other
  Mesh,     ///< STL, OBJ, PLY, OFF
  Rings,    ///< rings as text, see readRings()
  Points,   ///< points as text, see readPoints()
  Png       ///< an image
};

/// What an input holds; of a stream of JSON archives, what one of them holds.
struct Document {
  std::string name;  ///< of the input
  eInputFormat format = eInputFormat::Archive;
  std::string formatName;                    ///< "JSON archive", "binary STL"
  SerializationObjectPtrColl objects;        ///< of an archive, none of them null; the rings of a text
  std::map<std::string, omUInt32> versions;  ///< of the classes of these objects, as the archive has them
  geom::FaceVertexTriMesh3d<omReal64> mesh;  ///< of a mesh, all triangles that could be read
  geom::MeshReport meshReport;               ///< of a mesh
  std::vector<PointSet> pointSets;           ///< of points
  std::string image;                         ///< of an image, the bytes of its file
};

/// --from.
const Option& fromOption();

/// Reads an input and calls `use` with what it holds, with each archive of a stream once it is read. What is wrong with
/// a part of it is said, and the rest is used.
/// \param textFormat what numbers in a text are when neither --from nor the path say it
/// \throw DataError when nothing of it can be read
void readDocuments(const Arguments& arguments, const std::string& name, const std::function<void(const Document&)>& use,
                   eInputFormat textFormat = eInputFormat::Rings);

/// The entities of a document: those of an archive; rings as polygons; the mesh as a `Mesh3d`; points of two or three
/// coordinates as point clouds, one a set. None of an image.
/// \throw DataError for points of another number of coordinates
SerializationObjectPtrColl entitiesOf(const Document& document);

}  // namespace ormix::command
