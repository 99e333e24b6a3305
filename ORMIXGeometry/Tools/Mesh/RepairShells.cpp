#include <ORMIXGeometry/Tools/Mesh/RepairMesh.h>
#include <ORMIXGeometry/Tools/Mesh/Shells.h>

namespace ormix::geom::detail {

void turnShells(RepairMesh& mesh, RepairReport& report) {
  if (mesh.indexColl.empty()) return;
  const MeshShells found = findShells(mesh.view());
  std::vector<bool> isTurned(mesh.getNbTriangles());
  for (std::size_t triangle = 0; triangle < isTurned.size(); ++triangle) {
    const MeshShell& shell = found.shells[found.labels[triangle]];
    const eShellOrientation wanted = shell.depth % 2 == 0 ? eSO_Outward : eSO_Inward;
    isTurned[triangle] = shell.isClosed && shell.orientation != eSO_None && shell.orientation != wanted;
    report.nbTurned += isTurned[triangle] ? 1 : 0;
  }
  mesh.turn(isTurned);
}

}  // namespace ormix::geom::detail
