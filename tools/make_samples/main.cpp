// sonalyx-make-samples OUTDIR: writes the sample documents shipped in data/samples.
#include <iostream>
#include <string>

#include "document/document_file.h"
#include "sample_documents.h"

int main(int argc, char** argv) {
    if (argc != 2) {
        std::cerr << "usage: sonalyx-make-samples OUTDIR\n";
        return 2;
    }
    const std::string dir = argv[1];
    for (int layout : sonalyx::kSampleLayouts) {
        const std::string path = dir + "/" + sonalyx::sampleFileName(layout);
        if (!sonalyx::writeDocumentLinesAtomically(path, sonalyx::makeSampleDocument(layout))) {
            std::cerr << "Can't write the file. Please close, if it's opened.\n  " << path << '\n';
            return 1;
        }
        std::cout << path << '\n';
    }
    return 0;
}
