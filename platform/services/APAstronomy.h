// The few astronomical quantities the lunisolar calendar is reckoned from: the moments of new moon
// and the moments at which the Sun reaches a given apparent longitude. Moments are Julian days in
// Universal Time.
#pragma once

namespace APAstronomy {

// Julian day (UT) of the new moon with lunation number `k` (k = 0 is the new moon of 2000-01-06).
double NewMoonUT(int k);
// The Sun's apparent geocentric longitude, in degrees 0..360, at the Julian day `jdUT` (UT).
double SunApparentLongitude(double jdUT);
// The Julian day (UT) at which the Sun's apparent longitude reaches `degrees`, searched near the
// Julian day `guessUT` (within about two months).
double SolarLongitudeMoment(double degrees, double guessUT);
// Terrestrial time minus universal time, in seconds, for a decimal Gregorian year.
double DeltaTSeconds(double year);

}  // namespace APAstronomy
