// The files of one request: what is read is not written over, and no two outputs are one file.
#pragma once

#include <map>
#include <string>
#include <vector>

#include "host/sys/file_identity.h"
#include "product/tool/ToolRequest.h"

namespace app {

// Files are compared as the system knows them, so that links, "./" and the case of letters hide
// nothing. Devices and pipes may be named as often as one likes. Comparing n files costs O(n log
// n).
class FileRoles {
public:
    // path  an empty one is no file, here and below
    void Input(const std::string& path);
    // fails  Failure with Request when the file is an input or another output
    // as     how the request names it: "--svg out.svg", or the path alone
    // remedy what to do, for the end of the sentence
    // mayBeInput  the request says that the input is to be replaced
    void Output(const std::string& path, const std::string& as, const std::string& remedy,
                bool mayBeInput = false);

private:
    std::map<host::FileIdentity, std::string> m_inputs, m_outputs;  // as they were named
};

// Refuses a request whose files get in each other's way, before anything is done.
void CheckFiles(const product::ToolRequest& request);

// The files that an STL output of some name may become; none for an empty name.
std::vector<std::string> StlFiles(const std::string& path, const product::PartRequest& parts);

}  // namespace app
