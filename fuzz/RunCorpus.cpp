// Runs a fuzz target once over every file of the folders that are given.
#include "fuzz/Fuzz.h"

#include <QDirIterator>
#include <QFile>

int main(int argc, char** argv) {
    int files = 0;
    for (int at = 1; at < argc; ++at) {
        QDirIterator corpus(QString::fromLocal8Bit(argv[at]), QDir::Files);
        for (; corpus.hasNext(); ++files) {
            QFile file(corpus.next());
            tallyroom::require(file.open(QIODevice::ReadOnly), "the corpus can be read");
            const QByteArray bytes = file.readAll();
            LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(bytes.constData()),
                                   static_cast<std::size_t>(bytes.size()));
        }
    }
    std::printf("%d files\n", files);
    return files > 0 ? 0 : 1;
}
