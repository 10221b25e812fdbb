// What the View menu's check marks say about the board.
#pragma once

namespace tallyroom {

struct CanvassOptions {
    bool blankForZero = false;     // mnuBlank0
    bool multiply = false;         // mnuMult
    bool department = false;       // mnuDept
    bool position = false;         // mnuPos
    bool seniorityDate = false;    // mnuSenDate
    bool seniorityNumber = false;  // mnuSenNum
    bool breakOut = false;         // mnuBreakOut
    bool alternatePhone = false;   // mnuAltPhone
    bool cellPhone = false;        // mnuCellPhone
    bool pager = false;            // mnuPager
    bool totalWithAccepted = true; // mnuTot item 0, else item 1

    // Column of tlyrTemp that the Total column shows and the total is sorted by.
    const char16_t* totalField() const { return totalWithAccepted ? u"totalot1" : u"totalot2"; }
};

} // namespace tallyroom
