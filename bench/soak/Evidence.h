#pragma once

#include <QString>

namespace brindlecam::soak {

struct Failure;
struct World;

/// What is kept of a walk that ended badly.
namespace Evidence {

/// Puts a picture of the screen, the program's log, the story and the pictures that differ into the
/// folder named by BRINDLECAM_ARTIFACTS, or the working folder. Answers where.
QString keep(World& world, const Failure& failure, const QString& story);

} // namespace Evidence

} // namespace brindlecam::soak
