#pragma once

#include <tavik/Export.h>

#include <cstddef>

namespace Tavik::Crypto {
struct RijndaelKernel;
}

/// The Rijndael block cipher: AES (FIPS-197) with blocks of 128 bits, and Rijndael's larger blocks of 192 and 256 bits.
///
///     AES aes;
///     aes.SetParameters(128, 128);                    // key and block length in bits
///     aes.StartEncryption(key);                       // 16 bytes
///     aes.Encrypt(plain, cipher, blockCount, AES::CBC);
///
/// and for the way back StartDecryption() and Decrypt(). An object keeps a key for each direction, so that it can do
/// both, with the same key or two. Without parameters or without a key for the direction asked for, the operations do
/// nothing and leave the output as it is; the same goes for null pointers.
///
/// There is no padding: data are whole blocks of blockLength / 8 bytes, at any address. The output may be the input;
/// otherwise the two must not overlap. CBC starts from a zero vector in each call, so that a message is to be passed in
/// one call, and equal messages under one key give equal ciphertexts. ECB shows which blocks of a message are equal.
/// Nothing here notices a forged message.
///
/// On x86-64 processors with the AES instructions (used on two blocks at a time where VAES is there too) the time taken
/// depends on neither key nor data, for all block lengths. Elsewhere tables are used: the time then depends on which of
/// their entries are in the cache, and somebody who can measure it on the same machine may learn the key.
///
/// Keys are wiped from memory when they are replaced and when the object is destroyed.
///
/// Threads: an object may encrypt and decrypt in any number of threads at once; setting parameters or keys needs it
/// alone.
class TAVIK_API AES
{
public:
    /// How the blocks of a message depend on each other.
    enum BlockMode : int
    {
        ECB = 0, ///< each block by itself
        CBC = 1  ///< each plain block is first added (XOR) to the encrypted one before it, the first to zeros
    };

    /// @{
    /// Without parameters and keys.
    AES();
    ~AES();
    AES(const AES&) = default;
    AES& operator=(const AES&) = default;
    /// @}

    /// Sets both lengths in bits, each 128, 192 or 256, and drops the keys of both directions.
    /// Any other value leaves the object without parameters.
    void SetParameters(int keyLength, int blockLength);

    /// Sets the key for encryption: keyLength / 8 bytes. A null key drops it.
    void StartEncryption(const unsigned char* key);

    /// Sets the key for decryption: keyLength / 8 bytes. A null key drops it.
    void StartDecryption(const unsigned char* key);

    /// @{
    /// Encrypts or decrypts one block. `out` may be `in`.
    void EncryptBlock(const unsigned char* in, unsigned char* out) const;
    void DecryptBlock(const unsigned char* in, unsigned char* out) const;
    /// @}

    /// Encrypts whole blocks.
    /// @param in,out      blockCount * blockLength / 8 bytes each; `out` may be `in`
    /// @param blockCount  0 does nothing
    /// @param mode        any value that is not a BlockMode does nothing
    void Encrypt(const unsigned char* in, unsigned char* out, unsigned int blockCount, BlockMode mode) const;

    /// The inverse of Encrypt() with the same parameters, key and mode.
    void Decrypt(const unsigned char* in, unsigned char* out, unsigned int blockCount, BlockMode mode) const;

protected:
    /// A cipher that works in the given way instead of the fastest one; for the library's own tests.
    explicit AES(const Tavik::Crypto::RijndaelKernel& kernel);

private:
    static constexpr std::size_t MaxScheduleWords = 120; // 15 round keys of 8 words each

    void expandKey(const unsigned char* key, unsigned int (&schedule)[MaxScheduleWords]) const;
    void invertSchedule();
    void wipeKeys();

    std::size_t mKeyWords = 0;
    std::size_t mBlockWords = 0;
    std::size_t mRounds = 0;
    unsigned int mEncryptionSchedule[MaxScheduleWords] = {};
    unsigned int mDecryptionSchedule[MaxScheduleWords] = {};
    bool mCanEncrypt = false;
    bool mCanDecrypt = false;
    const Tavik::Crypto::RijndaelKernel* mKernel;
};
