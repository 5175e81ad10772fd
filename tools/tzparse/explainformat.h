#pragma once

#include "tzparser/explain/explainreport.h"

#include "outputwriter.h"

// The report of an explained parse as text for people, lines counted from 1: the choice of the
// sample, each rule below the rule above it with what was found about it ("!" in front of what the
// author should look at), and a summary. Long lines are folded or cut; bytes that can't be printed
// are shown as "\x1b".
//
//     ! no line fits "mtu $int:mtu"; $mtu takes a whole number
//         nearest: line 7
//             mtu auto
//                 ^ matched up to here
//         statement:
//             mtu $int:mtu
//                 ^ stopped here
void WriteExplanation(const ExplainReport& report, COutputWriter& out);

// The number of facts that the author should look at.
std::size_t CountTroubles(const ExplainReport& report);
