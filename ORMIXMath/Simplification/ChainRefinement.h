#pragma once

#include <ORMIXMath/Simplification/ChainBoxes.h>
#include <ORMIXMath/Simplification/DouglasPeucker.h>
#include <ORMIXMath/Simplification/PathArcs.h>

#include <limits>
#include <vector>

/// \file
/// Taking vertices back where simplified arcs would cross; not installed.

namespace ormix::detail {

/// The chords of arcs, one arc after the other.
struct ArcChords {
  std::vector<PathChord> chords;
  std::vector<std::size_t> ends;  ///< for each arc, where its chords end
};

/// Appends to `chords` those of a stretch that is split at the farthest vertex of its chord, and on where vertices are
/// farther than the tolerance from the chords that come of it.
/// \param points of the path, or from any vertex of it on
/// \param first index in `points` of the vertex where the stretch begins; the new chords have indices in `points` too
void splitChord(const PlanarPoint* points, std::size_t first, const PathChord& chord, omReal64 tolerance,
                std::vector<PathChord>& chords);

/// The chords of all arcs, split until no two conflict. A chain is a stretch of an arc and the chord that replaces it.
///
/// Two chains conflict where their chords have a point in common that is not an end of both, or have both ends in
/// common; a chain also conflicts with the end of another one round which the stretch and its chord wind together: the
/// chord passes it on the other side. Chains in conflict are split at their farthest vertices, all at once, and only
/// the new ones are compared with the others then, so that the order of chains does not matter.
///
/// Chains are found by the boxes of their chords, widened by the distance of their farthest vertices: stretch and chord
/// are inside. The boxes are upright in a frame that is turned as most of the length of the chords runs, as long edges
/// side by side would have boxes that overlap otherwise.
class ChainRefinement {
 public:
  /// \param chords of all arcs
  /// \param tolerance largest distance of a vertex from its chord, also in chains that come from splitting; may be
  /// infinite
  ChainRefinement(const PathArcs& arcs, const ArcChords& chords, omReal64 tolerance);

  /// Splits chains until none conflict that can be split. False where two edges of the input cross, see crossing().
  bool run();

  /// The vertices of an arc that are kept, by their positions in it, ascending.
  void keptOfArc(std::size_t arc, std::vector<omUInt32>& kept) const;

  const PlanarPoint& crossing() const { return _crossing; }

 private:
  struct Chain {
    omUInt32 first;     ///< the points of PathArcs where the stretch begins
    omUInt32 last;      ///< and ends
    omUInt32 farthest;  ///< and is split
    omUInt32 next;      ///< the chain after it, of the same arc or of the next one
    omReal64 radius;    ///< no less than the distance of the farthest vertex; 0 when there is none between the ends
    omUInt32 round;     ///< in which it was made, the last one while it is to be compared
    bool isMarked;      ///< to be split
    bool isFirstOfArc;
  };

  Chain chainOf(std::size_t arcBegin, std::size_t first, const PathChord& chord) const;
  bool canBeSplit(const Chain& chain) const { return chain.last - chain.first > 1; }
  void turnFrame();
  PlanarPoint toFrame(const PlanarPoint& point) const;
  PlanarBox stretchBox(const Chain& chain) const;
  const PlanarPoint& point(omUInt32 index) const { return _points[index]; }

  void splitClosedChains();
  void buildBoxes();
  bool compareWithOthers(omUInt32 chain);
  bool compare(omUInt32 first, omUInt32 second);
  void markIfPassed(omUInt32 chain, const Chain& other);
  bool isPassed(const Chain& chain, const PlanarPoint& point);
  void mark(omUInt32 chain);
  void splitMarked();
  void split(omUInt32 chain);
  void restoreAll();

  const PathArcs& _arcs;
  const std::vector<PlanarPoint>& _points;
  omReal64 _tolerance;
  PlanarPoint _axis{1, 0};    ///< of the frame of the boxes
  omReal64 _frameMargin = 0;  ///< bounds the rounding of coordinates in the frame
  std::vector<Chain> _chains;
  std::vector<omUInt32> _firstOfArc;
  std::vector<omUInt32> _slots;  ///< the first chain of each box; its other ones follow up to that of the next box
  ChainBoxes _boxes;
  std::vector<omUInt32> _new;
  std::vector<omUInt32> _marked;
  std::vector<PathChord> _chords;  ///< of the chain that is being split
  omUInt32 _round = 0;
  std::size_t _work = 0;
  PlanarPoint _crossing{0, 0};
};

}  // namespace ormix::detail
