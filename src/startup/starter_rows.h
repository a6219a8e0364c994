// The rows of the starter databases: a fictitious consultant's week. One row a day, because example
// data moves one row of each date to the last week.
#pragma once

namespace kelvrane::starter {

struct Customer {
    const char* company;
    const char* title;
    const char* firstName;
    const char* lastName;
    const char* address1;
    const char* address2;
    const char* city;
    const char* state;
    const char* zipCode;
    double discount; ///< percent
};

inline constexpr Customer customers[] = {
    {"Example Orchards Inc.", "Ms.", "Paula", "Pretend", "100 Sample Street", "Suite 4", "Anytown",
     "OH", "00001", 0},
    {"Imaginary Bridge Works", "Mr.", "Max", "Madeup", "25 Nowhere Avenue", "", "Fictionville",
     "TX", "00002", 5},
    {"Placeholder Publishing", "Dr.", "Nora", "Nobody", "7 Specimen Lane", "Building B",
     "Sampleton", "OR", "00003", 12.5},
};

struct Project {
    const char* name;
    const char* number;
    const char* entryDate;
    const char* notes;
    double rate;  ///< for an hour
    int customer; ///< index into customers
};

inline constexpr Project projects[] = {
    {"Harvest Planner", "EX-101", "1999-11-02", "Planning tool for the picking season", 75, 0},
    {"Orchard Web Site", "EX-102", "1999-11-15", "< Add Notes >", 60, 0},
    {"Load Calculations", "EX-201", "1999-12-01", "Review of the spring figures", 95, 1},
    {"Site Survey", "EX-202", "1999-12-06", "< Add Notes >", 80, 1},
    {"Spring Catalog", "EX-301", "1999-12-13", "Layout and proofs, 48 pages", 55.5, 2},
    {"Author Interviews", "EX-302", "1999-12-20", "< Add Notes >", 50, 2},
};

struct Day {
    const char* date;
    int project; ///< index into projects
    int breakMinutes;
    int totalMinutes; ///< break included
};

inline constexpr Day days[] = {
    {"2000-01-01", 0, 45, 510}, {"2000-01-02", 2, 30, 495}, {"2000-01-03", 4, 60, 540},
    {"2000-01-04", 0, 45, 465}, {"2000-01-05", 3, 35, 420}, {"2000-01-06", 1, 15, 255},
    {"2000-01-07", 5, 10, 190},
};

} // namespace kelvrane::starter
