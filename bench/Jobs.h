// The measured jobs, each against its floor.
#pragma once

namespace tallyroom::bench {

void totalsOfTwoWeeks();
void totalsOfAllDates();
void gridFill();
void recordingAnswers();
void openingTheWindow();
void translatingTotals();
void fairnessOfAYear();
void checksOfAYear();

void growthOfTotals();  // a table of its own
void growthOfAnswers(); // likewise
void costOfStanding();  // likewise
void memoryOfTheBoard();

} // namespace tallyroom::bench
