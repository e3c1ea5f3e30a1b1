// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

// Writes a firmware package for the simulated device and prints the SHA-256 of its image.

#include "simulator/dfu/Bootloader.h"
#include "simulator/dfu/Checksum.h"
#include "simulator/dfu/DfuPackage.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QTextStream>

namespace {

int fail(const QString &message)
{
    QTextStream(stderr) << "make-package: " << message << '\n';
    return 1;
}

} // namespace

int main(int argc, char *argv[])
{
    const QCoreApplication application(argc, argv);
    QCommandLineParser parser;
    parser.setApplicationDescription("Writes a firmware package with pseudo-random bytes.");
    parser.addHelpOption();
    parser.addOption({"size", "The size of the image in bytes.", "N", "200000"});
    parser.addOption({"seed", "The seed of the pseudo-random bytes.", "N", "1"});
    parser.addPositionalArgument("OUTPUT.zip", "The package to write.");
    parser.process(application);
    if (parser.positionalArguments().size() != 1) {
        parser.showHelp(2);
    }
    bool isSize = false;
    bool isSeed = false;
    const int size = parser.value("size").toInt(&isSize);
    const quint32 seed = parser.value("seed").toUInt(&isSeed);
    if (!isSize || size < 1 || size > Bootloader::kMaxImageSize || !isSeed) {
        return fail(QStringLiteral("the size must be from 1 to %1, the seed from 0 to 4294967295")
                        .arg(Bootloader::kMaxImageSize));
    }
    const DfuPackage package = DfuPackage::generate(size, seed);
    const QString path = parser.positionalArguments().at(0);
    const auto error = package.write(path);
    if (error != DfuPackage::Error::None) {
        return fail(path + ": " + DfuPackage::errorText(error));
    }
    QTextStream(stdout) << Checksum::sha256(package.firmware) << '\n';
    return 0;
}
