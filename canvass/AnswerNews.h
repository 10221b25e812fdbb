// What a recording has done, in words.
#pragma once

#include "canvass/AnswerRecording.h"
#include "canvass/Offer.h"

namespace tallyroom::AnswerNews {

// Of a recording that came to its end: "Accepted 8:00 for 3 on Sat 11/28", and who was passed over
// and why. `names` are those of the employees.
QString text(const AnswerRequest& request, const AnswerRecording::Result& result,
             const QStringList& names, Date today);

QString refusal(const Offer& offer); // of one that cannot be recorded

QString progress(int done, int of); // "Recording 120 of 300"

} // namespace tallyroom::AnswerNews
