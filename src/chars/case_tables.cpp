// case_tables.cpp - CCharCaseRelatedOps: the ASCII case tables and the
// comparisons that fold through them.
#include <cstdint>
#include <cstring>

#include "frame/module.h"
#include "zelstr/case.h"

bool CCharCaseRelatedOps::m_bMembersInitialized = false;
char CCharCaseRelatedOps::m_acToUpperUC[384];
char CCharCaseRelatedOps::m_acToLowerUC[384];
char CCharCaseRelatedOps::m_acSwpCaseUC[384];
bool CCharCaseRelatedOps::m_pbIsAlphaUC[384];
bool CCharCaseRelatedOps::m_pbIsLowerUC[384];
char* CCharCaseRelatedOps::m_acToUpper = nullptr;
char* CCharCaseRelatedOps::m_acToLower = nullptr;
char* CCharCaseRelatedOps::m_acSwpCase = nullptr;
bool* CCharCaseRelatedOps::m_pbIsAlpha = nullptr;
bool* CCharCaseRelatedOps::m_pbIsLower = nullptr;

namespace {

using Ops = CCharCaseRelatedOps;

unsigned char lowered(char c) {
  return static_cast<unsigned char>(Ops::m_acToLowerUC[static_cast<unsigned char>(c)]);
}

int sign(int r) { return (r > 0) - (r < 0); }

// Eight bytes of each string, equal as raw bytes: their folded forms are
// equal too, so the byte loop may skip them.
bool same_word(char const* s1, char const* s2) {
  std::uint64_t a, b;
  std::memcpy(&a, s1, 8);
  std::memcpy(&b, s2, 8);
  return a == b;
}

// Compares exactly `count` bytes, folded or not; the first differing pair.
template <bool kFold>
int compare_exactly(char const* s1, char const* s2, unsigned int count) {
  unsigned int i = 0;
  for (; i + 8 <= count && same_word(s1 + i, s2 + i); i += 8) {
  }
  for (; i < count; ++i) {
    int const a = kFold ? lowered(s1[i]) : static_cast<unsigned char>(s1[i]);
    int const b = kFold ? lowered(s2[i]) : static_cast<unsigned char>(s2[i]);
    if (a != b) return a - b;
  }
  return 0;
}

// Compares at most `count` bytes, stopping at the terminator of `s1`.  Byte
// by byte: reading a whole word could run past the end of the string.
template <bool kFold>
int compare_to_end(char const* s1, char const* s2, unsigned int count) {
  for (unsigned int i = 0; i < count; ++i) {
    int const a = kFold ? lowered(s1[i]) : static_cast<unsigned char>(s1[i]);
    int const b = kFold ? lowered(s2[i]) : static_cast<unsigned char>(s2[i]);
    if (a != b) return a - b;
    if (a == 0) return 0;
  }
  return 0;
}

void build_case_tables() { Ops::InitMembers(); }

ZELSTR_MODULE_HOOK zelstr::frame::LoadHook g_case_tables(zelstr::frame::LoadStep::kCaseTables,
                                                         build_case_tables);

}  // namespace

void CCharCaseRelatedOps::InitMembers() noexcept {
  if (m_bMembersInitialized) return;
  std::memset(m_pbIsAlphaUC, 0, 256);
  std::memset(m_pbIsLowerUC, 0, 256);
  for (int b = 'A'; b <= 'Z'; ++b) m_pbIsAlphaUC[b] = true;
  for (int b = 'a'; b <= 'z'; ++b) m_pbIsAlphaUC[b] = m_pbIsLowerUC[b] = true;
  for (int b = 0; b < 256; ++b) m_acToUpperUC[b] = static_cast<char>(b);
  std::memcpy(m_acToLowerUC, m_acToUpperUC, 256);
  std::memcpy(m_acSwpCaseUC, m_acToUpperUC, 256);
  for (int b = 'a'; b <= 'z'; ++b) m_acToUpperUC[b] = static_cast<char>(b - 32);
  for (int b = 'A'; b <= 'Z'; ++b) m_acToLowerUC[b] = static_cast<char>(b + 32);
  for (int b = 'A'; b <= 'Z'; ++b) {
    m_acSwpCaseUC[b] = static_cast<char>(b + 32);
    m_acSwpCaseUC[b + 32] = static_cast<char>(b);
  }
  m_acToUpper = m_acToUpperUC + 256;
  m_acToLower = m_acToLowerUC + 256;
  m_acSwpCase = m_acSwpCaseUC + 256;
  m_pbIsAlpha = m_pbIsAlphaUC + 256;
  m_pbIsLower = m_pbIsLowerUC + 256;
  std::memcpy(m_acToUpperUC + 256, m_acToUpperUC, 128);
  std::memcpy(m_acToLowerUC + 256, m_acToLowerUC, 128);
  std::memcpy(m_acSwpCaseUC + 256, m_acSwpCaseUC, 128);
  std::memcpy(m_pbIsAlphaUC + 256, m_pbIsAlphaUC, 128);
  std::memcpy(m_pbIsLowerUC + 256, m_pbIsLowerUC, 128);
  m_bMembersInitialized = true;
}

int CCharCaseRelatedOps::AZ_StrICmp(char const* s1, char const* s2) noexcept {
  return compare_to_end<true>(s1, s2, ~0u);
}

int CCharCaseRelatedOps::AZ_StrNICmp(char const* s1, char const* s2, unsigned int count) noexcept {
  return sign(compare_to_end<true>(s1, s2, count));
}

int CCharCaseRelatedOps::AZ_StrNICmp_DontCareOfEOS(char const* s1, char const* s2,
                                                   unsigned int count) noexcept {
  return sign(compare_exactly<true>(s1, s2, count));
}

int CCharCaseRelatedOps::Standard_StrNCmp(char const* s1, char const* s2,
                                          unsigned int count) noexcept {
  return compare_to_end<false>(s1, s2, count);
}

int CCharCaseRelatedOps::StrNCmp_DontCareOfEOS(char const* s1, char const* s2,
                                               unsigned int count) noexcept {
  return compare_exactly<false>(s1, s2, count);
}
