// SPDX-License-Identifier: Apache-2.0

#pragma once

// How an app's processes are written.
enum AppKind : int
{
    AppKindVisual = 0,
    AppKindProgram = 1,
};

// To whom a version is given: those invited, or everybody.
enum AppReleaseType : int
{
    AppReleaseGray = 1,
    AppReleaseOnline = 2,
};
