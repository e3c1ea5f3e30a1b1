// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT
//
// Usage: swift window.swift wait|quit IDENTIFIER
//   wait    Waits for the program's window and prints its number.
//   quit    Asks the program to quit, like its menu.

import AppKit

func program(_ identifier: String) -> NSRunningApplication? {
    NSRunningApplication.runningApplications(withBundleIdentifier: identifier).first
}

/// Recognises the window by its size, since reading titles needs a permission.
func windowNumber(of program: NSRunningApplication) -> Int? {
    let all = CGWindowListCopyWindowInfo([.optionOnScreenOnly], kCGNullWindowID)
    let windows = all as? [[String: Any]] ?? []
    let found = windows.first { window in
        let bounds = window[kCGWindowBounds as String] as? [String: Any]
        return window[kCGWindowOwnerPID as String] as? Int == Int(program.processIdentifier)
            && bounds?["Width"] as? Int == 500 && bounds?["Height"] as? Int == 260
    }
    return found?[kCGWindowNumber as String] as? Int
}

let arguments = CommandLine.arguments
if arguments[1] == "quit" {
    exit(program(arguments[2])?.terminate() == true ? 0 : 1)
}
let deadline = Date(timeIntervalSinceNow: 60)
while Date() < deadline {
    if let running = program(arguments[2]), let number = windowNumber(of: running) {
        print(number)
        exit(0)
    }
    Thread.sleep(forTimeInterval: 0.2)
}
FileHandle.standardError.write(Data("There is no window of \(arguments[2])\n".utf8))
exit(1)
