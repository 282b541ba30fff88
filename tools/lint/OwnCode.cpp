// A plugin for clang-tidy: lets its checks look at the project's own declarations only. Without it they also
// walk through every header of the libraries, which takes most of the time and whose findings are thrown away
// afterwards.
#include <clang/AST/ASTConsumer.h>
#include <clang/AST/ASTContext.h>
#include <clang/Basic/SourceManager.h>
#include <clang/Frontend/FrontendPluginRegistry.h>
#include <memory>
#include <string>
#include <vector>

namespace {

class OwnCodeConsumer final : public clang::ASTConsumer {
public:
    /// Called before the consumer that runs the checks, which begins at what is named here.
    void HandleTranslationUnit(clang::ASTContext& context) override {
        const clang::SourceManager& sources = context.getSourceManager();
        std::vector<clang::Decl*> own;
        for (clang::Decl* declaration : context.getTranslationUnitDecl()->decls()) {
            if (!sources.isInSystemHeader(sources.getExpansionLoc(declaration->getLocation())))
                own.push_back(declaration);
        }
        context.setTraversalScope(own);
    }
};

class OwnCodeAction final : public clang::PluginASTAction {
protected:
    std::unique_ptr<clang::ASTConsumer> CreateASTConsumer(clang::CompilerInstance& /*compiler*/,
                                                          llvm::StringRef /*file*/) override {
        return std::make_unique<OwnCodeConsumer>();
    }
    bool ParseArgs(const clang::CompilerInstance& /*compiler*/,
                   const std::vector<std::string>& /*arguments*/) override {
        return true;
    }
    ActionType getActionType() override { return AddBeforeMainAction; }
};

const clang::FrontendPluginRegistry::Add<OwnCodeAction> registration("own-code",
                                                                     "checks look at own code only");

} // namespace
