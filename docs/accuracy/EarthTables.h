#pragma once

/// How far the library's figures of the earth are from the WGS 84 ellipsoid, as GeographicLib computes it. Each
/// function prints a table: the worst of all directions, by range and latitude.
namespace Accuracy {

void printDistance();
void printBearing();
void printStep();
void printPlaneDistance();
void printPlaneBearing();
void printRoundTrip();
void printOutbound();
void printFlyBy();
void printDme();
void printIntersection();
void printCartesian();
void printSinglePrecision();

} // namespace Accuracy
