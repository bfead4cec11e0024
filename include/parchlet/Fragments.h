// Fragments.h - splitting a mark for sending, and joining its fragments.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

#include <parchlet/Annotation.h>
#include <parchlet/Platform.h>

namespace parchlet {

// The largest number of points that SplitMark puts into one fragment.
inline constexpr std::size_t kFragmentPoints = 256;

// Splits a mark into fragments for Parchlet::AddAnnotationFromRemote. Returns at least one.
// Fragment k has the mark's identity and style, the given `order`, `subModelIndex` k, and its share
// of the points in its own sub-model 0. The points of all sub-models keep their order. Shapes and
// pictures fit into one fragment; long paths need more.
//
// Two things are left out: the picture, which the receiver sets in fragment 0 with
// Annotation::SetPicture, and `tempStartTick`, which is a time of this process.
//
// Host thread; a page may own the mark. Throws std::bad_alloc if memory runs out.
PARCHLET_API std::vector<std::unique_ptr<Annotation>> SplitMark(const Annotation& mark,
                                                                std::int32_t order);

// Joins fragments of one mark as a page does. Returns a copy of the first fragment with
// `subModelIndex` 0, in which sub-model k has the points of the fragment with index k; of two
// fragments with the same index the later one counts. Null entries are skipped. Returns null if
// there is no fragment. Any thread. Throws std::bad_alloc if memory runs out.
PARCHLET_API std::unique_ptr<Annotation> JoinFragments(
    const std::vector<std::unique_ptr<Annotation>>& fragments);

}  // namespace parchlet
