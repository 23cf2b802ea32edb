#pragma once

/// The words and limits of the component's pipe; docs/component-protocol.md describes it whole.
///
/// One JSON object a line, UTF-8, ended by a line feed, in both directions.
namespace Quorlin::Protocol {

/// Version of the pipe's language; the greeting carries it and both sides must agree.
inline constexpr int Version = 1;

/// Longest line either side accepts, in bytes without its line end. A job of ten thousand
/// documents with long paths stays well below it.
inline constexpr int MaxLineBytes = 64 * 1024 * 1024;

// Message types: what the component is asked.
inline constexpr char Print[] = "print";
inline constexpr char Distil[] = "distil";
inline constexpr char Merge[] = "merge";
inline constexpr char Clear[] = "clear";
inline constexpr char Warm[] = "warm";

// Message types: what the component reports.
inline constexpr char Hello[] = "hello";
inline constexpr char Start[] = "start";
inline constexpr char State[] = "state";
inline constexpr char Progress[] = "progress";
inline constexpr char Output[] = "output";
inline constexpr char Failure[] = "failure";
inline constexpr char Complete[] = "complete";
inline constexpr char Error[] = "error";

} // namespace Quorlin::Protocol
