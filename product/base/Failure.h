// Refusals: what could not be done, for the program's user to read.
#pragma once

#include <stdexcept>
#include <string>

namespace product {

// What kind of refusal it is; callers decide by this and never by the text.
enum class Fault {
    Request,       // what was asked for makes no sense
    Input,         // a file cannot be read, or is not what it should be
    NothingThere,  // the drawing has nothing to work on
    NoResult,      // the work came to nothing
    NoSolid,       // there is an envelope, but it cannot be revolved
    Output,        // a result cannot be written
    NotCarriedOut  // a sensible request that nothing here can do yet
};

// One sentence that names what it is about and says what to do.
class Failure : public std::runtime_error {
public:
    Failure(Fault fault, const std::string& text) : std::runtime_error(text), m_fault(fault) {}
    Fault Code() const { return m_fault; }

private:
    Fault m_fault;
};

}  // namespace product
