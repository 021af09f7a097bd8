// SPDX-License-Identifier: MIT

#include "fuzz.h"

#include "kovakit-qt/network/http-response_p.h"

// What a server sends, taken apart as a whole and byte by byte.

namespace {

struct Result
{
    explicit Result(HttpResponse &response)
        : isComplete(response.isComplete())
        , isFailed(response.isFailed())
        , isPersistent(response.isPersistent())
        , status(response.status())
        , fields(response.fields())
        , content(response.takeContent())
    {
    }

    bool operator==(const Result &other) const
    {
        return isComplete == other.isComplete && isFailed == other.isFailed
            && (!isComplete || isPersistent == other.isPersistent) && status == other.status
            && fields == other.fields && content == other.content;
    }

    bool isComplete;
    bool isFailed;
    bool isPersistent;
    int status;
    QList<HttpResponse::Field> fields;
    QByteArray content;
};

} // namespace

int LLVMFuzzerInitialize(int *argc, char ***argv)
{
    startFuzzing(argc, argv);
    return 0;
}

int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const QByteArray bytes = bytesOf(data, size);
    HttpResponse whole;
    whole.add(bytes);
    HttpResponse inPieces;
    for (const char byte : bytes)
        inPieces.add(QByteArray(1, byte));
    const Result result(whole);
    expect(result == Result(inPieces), "pieces make the same response");
    expect(!(result.isComplete && result.isFailed), "a response ends in one way");
    expect(result.content.size() <= bytes.size(), "content is what was sent");
    expect(result.fields.size() <= HttpResponse::maxFields, "fields are counted");

    whole.end();
    expect(whole.isComplete() || whole.isFailed(), "a closed connection ends the response");
    return 0;
}
