#include <tavik/crypto/AES.h>
#include <tavik/crypto/LittleEndian.h>
#include <tavik/crypto/RijndaelKernel.h>

#include <algorithm>

#include <string.h> // explicit_bzero, which is not in <cstring>

using Tavik::Crypto::RijndaelKernel;

namespace {

const RijndaelKernel& chooseKernel()
{
    if (const RijndaelKernel* pairwise = Tavik::Crypto::pairwiseRijndaelKernel()) {
        return *pairwise;
    }
    if (const RijndaelKernel* instructions = Tavik::Crypto::instructionRijndaelKernel()) {
        return *instructions;
    }
    return Tavik::Crypto::tableRijndaelKernel();
}

bool isLength(int bits)
{
    return bits == 128 || bits == 192 || bits == 256;
}

void run(RijndaelKernel::Mode mode, const Tavik::Crypto::RoundKeys& keys, const unsigned char* in, unsigned char* out,
         std::size_t blockCount)
{
    if (in != nullptr && out != nullptr) {
        mode(keys, in, out, blockCount);
    }
}

} // namespace

AES::AES() : AES(chooseKernel()) {}

AES::AES(const RijndaelKernel& kernel) : mKernel(&kernel) {}

AES::~AES()
{
    wipeKeys();
}

void AES::SetParameters(int keyLength, int blockLength)
{
    wipeKeys();
    const bool valid = isLength(keyLength) && isLength(blockLength);
    mKeyWords = valid ? static_cast<std::size_t>(keyLength) / 32 : 0;
    mBlockWords = valid ? static_cast<std::size_t>(blockLength) / 32 : 0;
    mRounds = valid ? std::max(mKeyWords, mBlockWords) + 6 : 0;
}

void AES::StartEncryption(const unsigned char* key)
{
    explicit_bzero(mEncryptionSchedule, sizeof mEncryptionSchedule);
    mCanEncrypt = key != nullptr && mKeyWords > 0;
    if (mCanEncrypt) {
        expandKey(key, mEncryptionSchedule);
    }
}

void AES::StartDecryption(const unsigned char* key)
{
    explicit_bzero(mDecryptionSchedule, sizeof mDecryptionSchedule);
    mCanDecrypt = key != nullptr && mKeyWords > 0;
    if (mCanDecrypt) {
        expandKey(key, mDecryptionSchedule);
        invertSchedule();
    }
}

void AES::EncryptBlock(const unsigned char* in, unsigned char* out) const
{
    Encrypt(in, out, 1, ECB);
}

void AES::DecryptBlock(const unsigned char* in, unsigned char* out) const
{
    Decrypt(in, out, 1, ECB);
}

void AES::Encrypt(const unsigned char* in, unsigned char* out, unsigned int blockCount, BlockMode mode) const
{
    if (mCanEncrypt && (mode == ECB || mode == CBC)) {
        run(mode == ECB ? mKernel->encryptEcb : mKernel->encryptCbc, {mEncryptionSchedule, mBlockWords, mRounds}, in,
            out, blockCount);
    }
}

void AES::Decrypt(const unsigned char* in, unsigned char* out, unsigned int blockCount, BlockMode mode) const
{
    if (mCanDecrypt && (mode == ECB || mode == CBC)) {
        run(mode == ECB ? mKernel->decryptEcb : mKernel->decryptCbc, {mDecryptionSchedule, mBlockWords, mRounds}, in,
            out, blockCount);
    }
}

/// FIPS-197, 5.2, and the same for larger blocks.
void AES::expandKey(const unsigned char* key, unsigned int (&schedule)[MaxScheduleWords]) const
{
    for (std::size_t i = 0; i < mKeyWords; ++i) {
        schedule[i] = Tavik::Crypto::loadLittleEndian(key + 4 * i);
    }
    unsigned int roundConstant = 1;
    for (std::size_t i = mKeyWords; i < mBlockWords * (mRounds + 1); ++i) {
        unsigned int word = schedule[i - 1];
        if (i % mKeyWords == 0) {
            word = mKernel->substitute(word >> 8 | word << 24) ^ roundConstant;
            roundConstant = (roundConstant << 1 ^ (roundConstant >> 7) * 0x11B) & 0xFF;
        } else if (mKeyWords > 6 && i % mKeyWords == 4) {
            word = mKernel->substitute(word);
        }
        schedule[i] = schedule[i - mKeyWords] ^ word;
    }
}

/// From the order of encryption to what the kernels want for decryption.
void AES::invertSchedule()
{
    for (std::size_t first = 0, last = mRounds; first < last; ++first, --last) {
        std::swap_ranges(mDecryptionSchedule + first * mBlockWords, mDecryptionSchedule + (first + 1) * mBlockWords,
                         mDecryptionSchedule + last * mBlockWords);
    }
    std::transform(mDecryptionSchedule + mBlockWords, mDecryptionSchedule + mRounds * mBlockWords,
                   mDecryptionSchedule + mBlockWords, mKernel->inverseMixColumn);
}

void AES::wipeKeys()
{
    explicit_bzero(mEncryptionSchedule, sizeof mEncryptionSchedule); // not memset, which the compiler may drop
    explicit_bzero(mDecryptionSchedule, sizeof mDecryptionSchedule);
    mCanEncrypt = false;
    mCanDecrypt = false;
}
