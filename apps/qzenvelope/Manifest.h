// What a folder's batches have done already.
#pragma once

#include <fstream>
#include <map>
#include <string>

#include "product/report/ResultRecord.h"

namespace app {

// A file in the output folder that remembers each drawing's content, options and results. It grows
// by a line with each drawing that is done, so that a batch that was killed goes on where it was.
// Pictures stay in the file: in memory is what a table shows.
class Manifest {
public:
    // Reads what is there; lines that are not whole are passed over.
    // path  of the file; the folder exists
    explicit Manifest(const std::string& path);

    // The record, without pictures, of a drawing that need not be computed again: of the same
    // content and options, with pictures in the file if they are wanted, and its files still there
    // as they were written. A tool whose drawing gives no envelope counts as done, one whose files
    // could not be written does not. Null: none.
    const product::ResultRecord* Unchanged(const std::string& input, const std::string& content,
                                           const std::string& options, bool withPictures) const;

    // The line of a drawing that Unchanged() has found, with pictures.
    //
    // fails  Failure with Output when it cannot be read again
    std::string LineOf(const std::string& input) const;

    // Remembers a drawing. That it cannot be written is no failure of the batch: the drawing is
    // computed again the next time.
    void Add(const product::ResultRecord& record);

    // Leaves out of the file what was replaced, and drawings that are gone.
    void Finish();

private:
    struct Entry {
        product::ResultRecord record;  // without pictures
        std::streamoff at = 0;
        std::size_t size = 0;
    };

    void Keep(product::ResultRecord&& record, std::streamoff at, std::size_t size);

    std::string m_path;
    std::map<std::string, Entry> m_entries;
    std::ofstream m_file;
    std::streamoff m_end = 0;
    bool m_hasOld = false;  // lines that nobody needs
};

// The name of that file.
constexpr const char* kManifestName = ".qzenvelope-manifest";

// Sizes of the files of a drawing that was computed, as records hold them.
std::vector<std::pair<std::string, std::uintmax_t>> SizesOf(const product::DrawingResult& drawing);

}  // namespace app
