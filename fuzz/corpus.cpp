// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT

// Runs a fuzzer's own inputs without a fuzzer, or hands them to one:
//
//     fuzz_x_corpus FILE.hex [DIRECTORY]
//
// The file holds paragraphs of bytes in hexadecimal, with # in front of comments. With a directory,
// each goes into a file there instead.

#include <QtCore/QByteArray>
#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QList>
#include <QtCore/QString>

#include <cstdint>
#include <cstdio>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *bytes, size_t size);

namespace {

QList<QByteArray> readInputs(QFile &file)
{
    QList<QByteArray> inputs;
    bool isOpen = false; // a paragraph
    while (!file.atEnd()) {
        const QByteArray line = file.readLine().trimmed();
        if (line.startsWith('#')) {
            continue;
        }
        if (!line.isEmpty() && !isOpen) {
            inputs.append(QByteArray());
        }
        isOpen = !line.isEmpty();
        if (isOpen) {
            inputs.last() += QByteArray::fromHex(line);
        }
    }
    return inputs;
}

bool write(const QString &path, const QByteArray &bytes)
{
    QFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size();
}

} // namespace

int main(int argc, char *argv[])
{
    QFile file(QString::fromLocal8Bit(argc > 1 ? argv[1] : ""));
    if (!file.open(QIODevice::ReadOnly)) {
        return EXIT_FAILURE;
    }
    const QList<QByteArray> inputs = readInputs(file);
    const QString directory = argc > 2 ? QString::fromLocal8Bit(argv[2]) : QString();
    for (int index = 0; index < int(inputs.size()); ++index) {
        const QByteArray &input = inputs.at(index);
        if (directory.isEmpty()) {
            LLVMFuzzerTestOneInput(reinterpret_cast<const uint8_t *>(input.constData()),
                                   size_t(input.size()));
        } else if (!QDir().mkpath(directory)
                   || !write(QDir(directory).filePath(QString::number(index)), input)) {
            return EXIT_FAILURE;
        }
    }
    std::printf("%d inputs\n", int(inputs.size()));
    return inputs.isEmpty() ? EXIT_FAILURE : EXIT_SUCCESS;
}
