// The results of a batch as they come, one line a drawing.
#pragma once

#include <fstream>
#include <string>

#include "product/report/ResultRecord.h"

namespace app {

// A file of JSON lines: a head, then each drawing when it is done, whole lines only. It begins anew
// with each run. A run that was killed leaves a file that says so: it has fewer drawings than its
// head, and perhaps a last line that breaks off.
class ResultLines {
public:
    // path   empty: nothing is written
    // fails  Failure with Output when the file cannot be made
    ResultLines(const std::string& path, const product::ResultHead& head);

    // line  of a drawing, with its line break
    void Add(const std::string& line);
    // fails  Failure with Output when something could not be written
    void Finish();

private:
    std::string m_path;
    std::ofstream m_file;
};

}  // namespace app
