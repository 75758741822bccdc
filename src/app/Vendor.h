#pragma once

/// The vendor's addresses. The ones here lie under a domain that is reserved for examples; whoever ships the
/// program gives their own when building, as in -DVELTRANO_SUPPORT_ADDRESS='"help@example.org"'.

#ifndef VELTRANO_SUPPORT_ADDRESS
#define VELTRANO_SUPPORT_ADDRESS "support@quorvex.example"
#endif

namespace veltrano::vendor {

inline constexpr const char* kSupportAddress = VELTRANO_SUPPORT_ADDRESS;

} // namespace veltrano::vendor
