#include <tavik/crypto/AES.h>

#include "Bytes.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <new>

#ifdef TAVIK_PEER_MCRYPT
#include <mcrypt.h>
#endif
#ifdef TAVIK_PEER_OPENSSL
#include <openssl/evp.h>
#endif

namespace {

const Bytes Key = fromHex("000102030405060708090a0b0c0d0e0f101112131415161718191a1b1c1d1e1f");
const Bytes Untouched(64, 0xA5);

AES keyed(int keyLength, int blockLength, const Bytes& key = Key)
{
    AES aes;
    aes.SetParameters(keyLength, blockLength);
    aes.StartEncryption(key.data());
    aes.StartDecryption(key.data());
    return aes;
}

bool works(const AES& aes)
{
    Bytes encrypted = Untouched;
    Bytes decrypted = Untouched;
    aes.Encrypt(Key.data(), encrypted.data(), 1, AES::CBC);
    aes.DecryptBlock(Key.data(), decrypted.data());
    EXPECT_EQ(encrypted == Untouched, decrypted == Untouched);
    return encrypted != Untouched;
}

/// What our class and another library make of the same random data, for each key length; ours in place.
template <class Peer>
void compareWith(Peer encryptByPeer, std::initializer_list<int> blockLengths)
{
    std::mt19937 generator(3);
    for (const int blockLength : blockLengths) {
        for (const int keyLength : {128, 192, 256}) {
            for (const AES::BlockMode mode : {AES::ECB, AES::CBC}) {
                const auto blockCount = static_cast<unsigned int>(1 + generator() % 40);
                const Bytes key = randomBytes(static_cast<std::size_t>(keyLength) / 8, generator);
                const Bytes plain = randomBytes(blockCount * static_cast<std::size_t>(blockLength) / 8, generator);
                const AES aes = keyed(keyLength, blockLength, key);
                Bytes ours = plain;
                aes.Encrypt(ours.data(), ours.data(), blockCount, mode);
                EXPECT_EQ(ours, encryptByPeer(key, blockLength, plain, mode)) << keyLength << " " << blockLength;
                aes.Decrypt(ours.data(), ours.data(), blockCount, mode);
                EXPECT_EQ(ours, plain) << keyLength << " " << blockLength << " " << mode;
            }
        }
    }
}

} // namespace

TEST(AES, DoesNothingUnlessConfiguredAndKeyed)
{
    EXPECT_FALSE(works(AES()));
    EXPECT_TRUE(works(keyed(128, 128)));
    const int lengths[][2] = {{0, 128}, {128, 0}, {127, 128}, {128, 160}, {512, 256}, {-128, -128}, {16, 16}};
    for (const auto& [keyLength, blockLength] : lengths) {
        AES wrong = keyed(128, 128);
        wrong.SetParameters(keyLength, blockLength);
        wrong.StartEncryption(Key.data());
        wrong.StartDecryption(Key.data());
        EXPECT_FALSE(works(wrong)) << keyLength << " " << blockLength;
    }
    AES aes = keyed(256, 256);
    aes.SetParameters(256, 256);
    EXPECT_FALSE(works(aes)) << "new parameters drop the keys";
    aes = keyed(256, 256);
    aes.StartEncryption(nullptr);
    aes.StartDecryption(nullptr);
    EXPECT_FALSE(works(aes)) << "null keys";
}

TEST(AES, BadArgumentsLeaveTheOutput)
{
    const AES aes = keyed(128, 128);
    Bytes out = Untouched;
    aes.Encrypt(Key.data(), out.data(), 0, AES::CBC);
    aes.Decrypt(nullptr, nullptr, 0, AES::ECB);
    aes.Encrypt(nullptr, out.data(), 1, AES::ECB);
    aes.Decrypt(Key.data(), nullptr, 1, AES::CBC);
    aes.Encrypt(Key.data(), out.data(), 1, static_cast<AES::BlockMode>(2));
    aes.Decrypt(Key.data(), out.data(), 1, static_cast<AES::BlockMode>(-1));
    EXPECT_EQ(out, Untouched);
}

TEST(AES, WipesKeys)
{
    const Bytes random = fromHex("7be39b1c05d24fa86e01c4773af258960d91e5b84ac36f20d7681e9d43fa0b52");
    alignas(AES) unsigned char storage[sizeof(AES)];
    const auto keyIsThere = [&] {
        const auto* bytes = static_cast<const volatile unsigned char*>(storage);
        return std::search(bytes, bytes + sizeof storage, random.begin(), random.begin() + 16) !=
               bytes + sizeof storage;
    };
    auto* aes = new (storage) AES(keyed(256, 256, random));
    EXPECT_TRUE(keyIsThere());
    aes->StartEncryption(Key.data());
    EXPECT_TRUE(keyIsThere()) << "for decryption";
    aes->StartDecryption(Key.data());
    EXPECT_FALSE(keyIsThere());
    *aes = keyed(256, 256, random);
    EXPECT_TRUE(keyIsThere());
    aes->SetParameters(128, 128);
    EXPECT_FALSE(keyIsThere());
    *aes = keyed(256, 256, random);
    aes->~AES();
    EXPECT_FALSE(keyIsThere());
}

TEST(AESBesideMcrypt, AllLengths)
{
#ifdef TAVIK_PEER_MCRYPT
    const auto encrypt = [](Bytes key, int blockLength, Bytes data, AES::BlockMode mode) {
        std::string algorithm = "rijndael-" + std::to_string(blockLength);
        std::string modeName = mode == AES::CBC ? "cbc" : "ecb";
        Bytes zeroVector(32);
        const MCRYPT module = mcrypt_module_open(algorithm.data(), nullptr, modeName.data(), nullptr);
        EXPECT_EQ(mcrypt_generic_init(module, key.data(), static_cast<int>(key.size()), zeroVector.data()), 0);
        EXPECT_EQ(mcrypt_generic(module, data.data(), static_cast<int>(data.size())), 0);
        mcrypt_generic_end(module);
        return data;
    };
    compareWith(encrypt, {128, 192, 256});
#else
    GTEST_SKIP() << "built without libmcrypt (libmcrypt-dev)";
#endif
}

TEST(AESBesideOpenSsl, StandardBlocks)
{
#ifdef TAVIK_PEER_OPENSSL
    const auto encrypt = [](const Bytes& key, int, const Bytes& data, AES::BlockMode mode) {
        const std::string name = "AES-" + std::to_string(key.size() * 8) + (mode == AES::CBC ? "-CBC" : "-ECB");
        Bytes out(data.size());
        const Bytes zeroVector(16);
        int length = 0;
        EVP_CIPHER_CTX* context = EVP_CIPHER_CTX_new();
        EXPECT_EQ(EVP_EncryptInit(context, EVP_get_cipherbyname(name.c_str()), key.data(), zeroVector.data()), 1);
        EVP_CIPHER_CTX_set_padding(context, 0);
        EXPECT_EQ(EVP_EncryptUpdate(context, out.data(), &length, data.data(), static_cast<int>(data.size())), 1);
        EVP_CIPHER_CTX_free(context);
        return out;
    };
    compareWith(encrypt, {128});
#else
    GTEST_SKIP() << "built without OpenSSL (libssl-dev)";
#endif
}
