// Fixed data of the build.
#pragma once

namespace zento {

inline constexpr int kVerMajor = 13;
inline constexpr int kVerMinor = 0;
inline constexpr int kVerBuild = 4099;
inline constexpr int kVerRevision = 270;
inline constexpr int kVerNumber = kVerMajor * 100 + kVerMinor;
inline constexpr char kPlatformText[] = "Linux 64x86";
inline constexpr char kPlatformCode = 'D';
inline constexpr char kExprLibName[] = "libzentoexpr.so";

}  // namespace zento
