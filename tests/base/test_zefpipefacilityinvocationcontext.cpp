#include "ZEFTest.h"

#include <ZEFPipeFacilityInvocationContext.h>

#include <memory>

namespace {

class Request : public ZEFPipeFacilityInvocationContext {
public:
    explicit Request(int* deletions)
        : m_deletions(deletions)
    {
    }
    ~Request() override { ++*m_deletions; }

private:
    Q_DISABLE_COPY_MOVE(Request)
    int* m_deletions;
};

} // namespace

class TestZEFPipeFacilityInvocationContext : public ZEFTest {
    Q_OBJECT

private Q_SLOTS:
    void isDeletedThroughItsBase();
};

void TestZEFPipeFacilityInvocationContext::isDeletedThroughItsBase()
{
    int deletions = 0;
    std::unique_ptr<ZEFPipeFacilityInvocationContext> context = std::make_unique<Request>(&deletions);
    context.reset();
    QCOMPARE(deletions, 1);
}

ZEF_TEST_MAIN(TestZEFPipeFacilityInvocationContext)
#include "test_zefpipefacilityinvocationcontext.moc"
