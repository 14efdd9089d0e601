#pragma once

/// How far the heights and normals of terrain tiles are from the ground that the tiles were made of. Each function
/// prints a table.
namespace Accuracy {

/// Heights and normals over hills of several sizes, with a slope of 17 degrees at the steepest.
void printHills();

/// The same over gentle ground, where the whole metres of the files show as terraces.
void printTerraces();

} // namespace Accuracy
