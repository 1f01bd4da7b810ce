#pragma once
#include <string>
#include <string_view>

namespace tpv {

// An amount in Spanish words, for the total printed in words on the ticket.
// `texto` is digits with "." as the only decimal mark and may begin with
// "-"; `moneda`, when not empty, follows after a blank. The words are built
// digit by digit on the text, and every word keeps its trailing blank, so a
// money name stands two blanks from the last word. The result reads as the
// shops' earlier tickets did, odd spots included: no "mil" after a million
// whose thousands are all zero at fixed places, and a lost unit after a round
// ten ("veinte mil" for 20005). Beyond nine digits the result is "".
std::string EnLetras(std::string_view texto, std::string_view moneda);

}  // namespace tpv
