// What a folder's batches have done already.
#pragma once

#include <fstream>
#include <map>
#include <string>

#include "product/report/ResultRecord.h"

namespace app {

// A file in the output folder that remembers each drawing's content, options and results. It grows
// by a line with each drawing that is done, so that a batch that was killed goes on where it was,
// and is written anew at the end of a batch.
class Manifest {
public:
    // Reads what is there; lines that are not whole are passed over.
    // path  of the file; the folder exists
    explicit Manifest(const std::string& path);

    // The record of a drawing that need not be computed again: of the same content and options,
    // every tool good, with pictures if they are wanted, and its files still there. Null: none.
    const product::ResultRecord* Unchanged(const std::string& input, const std::string& content,
                                           const std::string& options, bool withPictures) const;

    // The record of a drawing; null: none.
    const product::ResultRecord* RecordOf(const std::string& input) const;

    // Remembers a drawing. That it cannot be written is no failure of the batch: the drawing is
    // computed again the next time.
    void Add(const product::ResultRecord& record);

    // Writes each drawing that still exists once.
    void Finish();

private:
    std::string m_path;
    std::map<std::string, product::ResultRecord> m_records;
    std::ofstream m_file;
};

// The name of that file.
constexpr const char* kManifestName = ".qzenvelope-manifest";

// Sizes of the files of a drawing that was computed, as records hold them.
std::vector<std::pair<std::string, std::uintmax_t>> SizesOf(const product::DrawingResult& drawing);

}  // namespace app
