// Has the passwords of a place found, kept and forgotten, as the programs have it done: a line for each on
// standard input, its answer on standard output. For test_secrets.py.
//
// ask_passwords URL USER; then "find", "find quietly", "has", "keep PASSWORD", "forget".
#include "sync/KeptPasswords.h"
#include "sync/KeyringLibrary.h"

#include <iostream>
#include <string>

namespace {

using namespace quillo;

std::string answer(const Outcome& outcome) {
    return outcome ? "done" : "error: " + outcome.error().message;
}

std::string answer(const Result<std::optional<std::string>>& found) {
    if (!found)
        return "error: " + found.error().message;
    return *found ? "found " + **found : "none";
}

std::string answer(const Result<Passwords::Kept>& kept) {
    if (!kept)
        return "error: " + kept.error().message;
    return *kept == Passwords::Kept::ForGood ? "for good" : "until the end";
}

} // namespace

int main(int, char** arguments) {
    const WebDavFolder place{arguments[1], arguments[2]};
    KeptPasswords passwords(loadKeyring, Keyring::Ask::No);
    for (std::string line; std::getline(std::cin, line);) {
        if (line == "find")
            passwords.mayAsk();
        if (line.starts_with("find"))
            std::cout << answer(passwords.find(place)) << std::endl;
        else if (line == "has")
            std::cout << (passwords.isInKeyring(place) ? "yes" : "no") << std::endl;
        else if (line.starts_with("keep "))
            std::cout << answer(passwords.keep(place, line.substr(5))) << std::endl;
        else if (line == "forget")
            std::cout << answer(passwords.forget(place)) << std::endl;
    }
}
